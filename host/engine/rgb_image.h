#pragma once

#include <cstdint>
#include <vector>

namespace pdfhost::engine {

// A rendered page: 8-bit RGB, no alpha, rows top to bottom, `stride` bytes per row.
struct RgbImage {
    int width = 0;
    int height = 0;
    int stride = 0;
    std::vector<std::uint8_t> pixels{};
};

}  // namespace pdfhost::engine
