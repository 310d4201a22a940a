// AnnotKey: what orders the result store's annotation entries — a record's file, place, count
// and bounds of its rectangles and search key, without the rectangles themselves. Its texts are
// views: a key made from a record views the record's texts, the store's own keys view the texts
// of its pool.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/host_abi.h"

struct SearchRecord;

struct AnnotKey {
    std::wstring_view file;
    int32_t page = -1;
    int32_t start = -1;
    int32_t end = -1;
    int32_t index = -1;
    std::size_t rectCount = 0;
    NdxRect bounds{0, 0, 0, 0};
    std::wstring_view searchKey;

    static AnnotKey Of(const SearchRecord& record);
};

// File, page, start, end, index, number of rectangles, the bounds' left, right, top and bottom
// (exactly, NaN after every number), search key.
bool operator<(const AnnotKey& a, const AnnotKey& b);

// The total order by which records key the annotation map, their keys' order: pieces take no part.
bool operator<(const SearchRecord& a, const SearchRecord& b);
