// What the text select tool of a document view holds: rectangles on one page, or character
// ranges on pages, or nothing. A new selection replaces the old one.
#pragma once

#include <algorithm>
#include <vector>

#include "engine/geometry.h"

namespace pdfhost {

class TextSelection {
  public:
    // Characters `start` to `end` (both included) of a page's character numbering.
    struct Range {
        int page = 0;
        int start = 0;
        int end = 0;
        friend bool operator==(const Range&, const Range&) = default;
    };

    void Clear() {
        page_ = -1;
        rects_.clear();
        ranges_.clear();
    }
    void SelectRects(int page, std::vector<engine::Rect> rects) {
        Clear();
        page_ = page;
        rects_ = std::move(rects);
    }
    // Kept in page order, then by first character.
    void SelectRanges(std::vector<Range> ranges) {
        Clear();
        ranges_ = std::move(ranges);
        std::sort(ranges_.begin(), ranges_.end(), [](const Range& a, const Range& b) {
            return a.page != b.page ? a.page < b.page : a.start < b.start;
        });
    }

    bool Empty() const { return rects_.empty() && ranges_.empty(); }
    // The page of the rectangles; -1 without them.
    int RectsPage() const { return page_; }
    const std::vector<engine::Rect>& Rects() const { return rects_; }
    const std::vector<Range>& Ranges() const { return ranges_; }

    friend bool operator==(const TextSelection&, const TextSelection&) = default;

  private:
    int page_ = -1;
    std::vector<engine::Rect> rects_;
    std::vector<Range> ranges_;
};

}  // namespace pdfhost
