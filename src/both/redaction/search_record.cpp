#include "search_record.h"

#include <algorithm>

NdxRect SearchRecord::Union() const {
    if (rects.empty())
        return NdxRect{0, 0, 0, 0};
    NdxRect all = rects.front();
    for (const NdxRect& r : rects) {
        all.left = std::min(all.left, r.left);
        all.bottom = std::min(all.bottom, r.bottom);
        all.right = std::max(all.right, r.right);
        all.top = std::max(all.top, r.top);
    }
    return all;
}
