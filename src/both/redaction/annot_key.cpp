#include "annot_key.h"

#include <cmath>

#include "redaction/search_record.h"

namespace {

// Exact float order, with NaN after every number so that the order stays strict.
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

AnnotKey AnnotKey::Of(const SearchRecord& record) {
    return AnnotKey{record.file,  record.page,         record.start,   record.end,
                    record.index, record.rects.size(), record.Union(), record.searchKey};
}

bool operator<(const AnnotKey& a, const AnnotKey& b) {
    if (int c = a.file.compare(b.file); c != 0)
        return c < 0;
    for (int c : {Compare(a.page, b.page), Compare(a.start, b.start), Compare(a.end, b.end),
                  Compare(a.index, b.index), Compare(a.rectCount, b.rectCount)}) {
        if (c != 0)
            return c < 0;
    }
    for (int c :
         {CompareFloats(a.bounds.left, b.bounds.left),
          CompareFloats(a.bounds.right, b.bounds.right), CompareFloats(a.bounds.top, b.bounds.top),
          CompareFloats(a.bounds.bottom, b.bounds.bottom)}) {
        if (c != 0)
            return c < 0;
    }
    return a.searchKey.compare(b.searchKey) < 0;
}

bool operator<(const SearchRecord& a, const SearchRecord& b) {
    return AnnotKey::Of(a) < AnnotKey::Of(b);
}
