#pragma once

namespace pdfhost::engine {

// A rectangle in PDF page space (y up), as the host's tables exchange it.
struct Rect {
    float left = 0;
    float bottom = 0;
    float right = 0;
    float top = 0;

    float Width() const { return right - left; }
    float Height() const { return top - bottom; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace pdfhost::engine
