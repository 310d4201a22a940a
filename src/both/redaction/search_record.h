// SearchRecord: one stored match of a search (or one form control), as later commands name it by
// search key and position. A plain value; a default-built record is the "not found" answer, told
// by `page` being -1.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/host_abi.h"

// A further part of a match that runs over a page break: where it lies, no geometry.
struct SearchPiece {
    std::wstring file;
    int32_t page = -1;
    int32_t start = -1;
    int32_t end = -1;
    int32_t index = 0;
    std::wstring searchKey;
};

struct SearchRecord {
    std::wstring file;
    int32_t page = -1;
    int32_t start = -1;  // first character index of the match in the page's text
    int32_t end = -1;    // last character index, inclusive
    int32_t index = -1;  // ordinal of the match on its page
    std::wstring searchKey;
    std::vector<SearchPiece> pieces;
    std::vector<NdxRect> rects;  // page space, in the finder's order

    bool found() const { return page != -1; }

    // The smallest rectangle around all `rects`; all zero without rectangles.
    NdxRect Union() const;
};
