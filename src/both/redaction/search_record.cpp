#include "search_record.h"

#include <algorithm>
#include <cmath>

namespace {

// Exact float order, with NaN after every number so that the map's order stays strict.
int CompareFloats(float a, float b) {
    const bool aNan = std::isnan(a);
    const bool bNan = std::isnan(b);
    if (aNan || bNan)
        return static_cast<int>(aNan) - static_cast<int>(bNan);
    return a < b ? -1 : (b < a ? 1 : 0);
}

template <typename T>
int Compare(const T& a, const T& b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

}  // namespace

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

bool operator<(const SearchRecord& a, const SearchRecord& b) {
    if (int c = a.file.compare(b.file); c != 0)
        return c < 0;
    for (int c : {Compare(a.page, b.page), Compare(a.start, b.start), Compare(a.end, b.end),
                  Compare(a.index, b.index), Compare(a.rects.size(), b.rects.size())}) {
        if (c != 0)
            return c < 0;
    }
    const NdxRect ua = a.Union();
    const NdxRect ub = b.Union();
    for (int c : {CompareFloats(ua.left, ub.left), CompareFloats(ua.right, ub.right),
                  CompareFloats(ua.top, ub.top), CompareFloats(ua.bottom, ub.bottom)}) {
        if (c != 0)
            return c < 0;
    }
    return a.searchKey.compare(b.searchKey) < 0;
}
