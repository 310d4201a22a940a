#include "file_size_text.h"

#include <array>
#include <cstdio>

namespace pdfhost {

std::string FileSizeText(std::int64_t bytes) {
    if (bytes < 1024)
        return std::to_string(bytes < 0 ? 0 : bytes) + " bytes";
    static constexpr std::array<const char*, 3> kUnits = {"KB", "MB", "GB"};
    double value = static_cast<double>(bytes) / 1024.0;
    std::size_t unit = 0;
    // Rounding may carry a value up to the next unit ("1024 KB" reads as "1.0 MB").
    while (unit + 1 < kUnits.size() && value >= 1023.95) {
        value /= 1024.0;
        ++unit;
    }
    std::array<char, 48> text{};
    if (value < 9.95)
        std::snprintf(text.data(), text.size(), "%.1f %s", value, kUnits[unit]);
    else
        std::snprintf(text.data(), text.size(), "%.0f %s", value, kUnits[unit]);
    return text.data();
}

}  // namespace pdfhost
