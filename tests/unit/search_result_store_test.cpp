// The result store: the total order of records that keys the annotation map, list lookups, and the
// annotation entries found by record, name and handle.
#include <gtest/gtest.h>

#include "redaction/search_result_store.h"

namespace {

SearchRecord Record(std::wstring file, int page, int start, std::vector<NdxRect> rects = {},
                    std::wstring key = L"k") {
    return {std::move(file), page, start, start + 2, 0, std::move(key), {}, std::move(rects)};
}

HostAnnot Handle(int n) {
    return reinterpret_cast<HostAnnot>(static_cast<intptr_t>(n));
}

TEST(SearchRecordTest, TotalOrderFieldByFieldWithUnionAndKeyLast) {
    const NdxRect a{10, 20, 30, 40};
    // Each record comes strictly before the next.
    const std::vector<SearchRecord> ascending = {
        Record(L"", 5, 0),
        Record(L"f", 0, 0),
        Record(L"f", 0, 0, {a}),
        Record(L"f", 0, 0, {a, NdxRect{10, 20, 30, 40}}),         // more rectangles
        Record(L"f", 0, 0, {a, NdxRect{10, 20, 31, 40}}),         // union's right
        Record(L"f", 0, 0, {NdxRect{10, 20, 31, 41}, a}),         // union's top
        Record(L"f", 0, 0, {NdxRect{10, 20, 31, 41}, a}, L"k2"),  // searchKey last
        Record(L"f", 0, 3),
        Record(L"f", 1, 0),
        Record(L"fa", 0, 0),
    };
    for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
        EXPECT_TRUE(ascending[i] < ascending[i + 1]) << i;
        EXPECT_FALSE(ascending[i + 1] < ascending[i]) << i;
    }
    // Pieces take no part; union of no rectangles is all zero.
    SearchRecord withPiece = ascending[1];
    withPiece.pieces.push_back(SearchPiece{L"", 3, 1, 2, 0, L""});
    EXPECT_FALSE(withPiece < ascending[1]);
    EXPECT_FALSE(ascending[1] < withPiece);
    const NdxRect none = ascending[1].Union();
    EXPECT_EQ(none.left + none.bottom + none.right + none.top, 0.0f);
    const NdxRect both = ascending[4].Union();
    EXPECT_EQ(both.left, 10.0f);
    EXPECT_EQ(both.right, 31.0f);
}

TEST(SearchResultStoreTest, ListsByFileAndKeyWithTheEmptyRecordForMisses) {
    SearchResultStore store;
    store.SetResults(L"f", L"k", {Record(L"f", 0, 1), Record(L"f", 2, 5)});
    store.AppendResult(L"g", L"k", Record(L"g", 1, 1));
    EXPECT_EQ(store.GetResult(L"f", L"k", 1).page, 2);
    EXPECT_EQ(store.GetResult(L"g", L"k", 0).page, 1);
    for (const auto& [file, key, index] : {std::tuple{L"f", L"k", 2}, std::tuple{L"f", L"x", 0},
                                           std::tuple{L"x", L"k", 0}, std::tuple{L"f", L"k", -1}}) {
        EXPECT_FALSE(store.GetResult(file, key, index).found());
    }
    store.SetResults(L"f", L"k", {Record(L"f", 7, 1)});  // replaces the list
    EXPECT_EQ(store.GetResult(L"f", L"k", 0).page, 7);
    EXPECT_FALSE(store.GetResult(L"f", L"k", 1).found());
}

TEST(SearchResultStoreTest, RecordsComeBackAsStoredWhenListsAreShared) {
    SearchResultStore store;
    // The same matches under two keys (a repeated search), and a spanning record without file
    // id and key.
    store.SetResults(L"f", L"k", {Record(L"f", 0, 1, {NdxRect{1, 2, 3, 4}})});
    store.SetResults(L"f", L"k2", {Record(L"f", 0, 1, {NdxRect{1, 2, 3, 4}}, L"k2")});
    store.SetResults(L"f", L"span", {Record(L"", 2, 0, {}, L"")});
    const SearchRecord first = store.GetResult(L"f", L"k", 0);
    const SearchRecord second = store.GetResult(L"f", L"k2", 0);
    EXPECT_EQ(first.searchKey, L"k");
    EXPECT_EQ(second.searchKey, L"k2");
    EXPECT_EQ(second.file, L"f");
    ASSERT_EQ(second.rects.size(), 1u);
    EXPECT_EQ(second.rects[0].top, 4.0f);
    EXPECT_EQ(store.GetResult(L"f", L"span", 0).file, L"");
    EXPECT_EQ(store.GetResult(L"f", L"span", 0).searchKey, L"");
    // A form record appended under one key leaves the other's list as it was.
    store.AppendResult(L"f", L"k2", Record(L"f", 1, -1, {}, L"k2"));
    EXPECT_EQ(store.GetResult(L"f", L"k2", 1).page, 1);
    EXPECT_FALSE(store.GetResult(L"f", L"k", 1).found());
    // A different result is no copy of an earlier one.
    store.SetResults(L"f", L"k3", {Record(L"f", 0, 1, {NdxRect{1, 2, 3, 5}}, L"k3")});
    EXPECT_EQ(store.GetResult(L"f", L"k3", 0).rects[0].top, 5.0f);
}

// Keys are kept compactly when they are the plug-in's own GUID texts; every key, of that form
// or not, reads back exactly and is told apart from its near neighbours.
TEST(SearchResultStoreTest, EveryKeyFindsItsOwnListAndReadsBackExactly) {
    const std::vector<std::wstring> keys = {
        L"{0123ABCD-4567-89EF-0A1B-2C3D4E5F6789}",
        L"{0123ABCD-4567-89EF-0A1B-2C3D4E5F6788}",  // last digit
        L"{0123abcd-4567-89ef-0a1b-2c3d4e5f6789}",  // lower case: kept as text
        L"{0123ABCD-4567-89EF-0A1B2-C3D4E5F6789}",  // a dash one place late
        L"{0123ABCD-4567-89EF-0A1B-2C3D4E5F678G}",  // not hex
        L"0123ABCD-4567-89EF-0A1B-2C3D4E5F6789",    // no braces
        L"k",
    };
    SearchResultStore store;
    for (std::size_t i = 0; i < keys.size(); ++i)
        store.SetResults(L"f", keys[i], {Record(L"f", static_cast<int>(i), 0, {}, keys[i])});
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const SearchRecord found = store.GetResult(L"f", keys[i], 0);
        EXPECT_EQ(found.page, static_cast<int>(i)) << i;
        EXPECT_EQ(found.searchKey, keys[i]) << i;
        store.SetAnnot(found, L"ai_plugin_" + std::to_wstring(i), Handle(static_cast<int>(i) + 1));
    }
    EXPECT_FALSE(store.GetResult(L"f", L"{0123ABCD-4567-89EF-0A1B-2C3D4E5F678A}", 0).found());
    // Closing the file finds each annotation entry again through the key read back.
    store.EraseAnnotsOfFile(L"f");
    EXPECT_TRUE(store.annots().empty());
}

TEST(SearchResultStoreTest, AnnotationEntriesByRecordNameAndHandle) {
    SearchResultStore store;
    const SearchRecord first = Record(L"f", 0, 1, {NdxRect{1, 1, 2, 2}});
    const SearchRecord second = Record(L"f", 3, 1, {NdxRect{1, 1, 2, 2}});
    store.SetAnnot(second, L"ai_plugin_same", Handle(2));
    store.SetAnnot(first, L"ai_plugin_same", Handle(1));
    EXPECT_TRUE(store.IsAnnotated(first));
    // Among equal names the first key in record order wins.
    EXPECT_EQ(store.GetPageIdxByAnnotUniqueID(L"ai_plugin_same"), 0);
    EXPECT_EQ(store.GetRecordAnnot(L"ai_plugin_same"), Handle(1));
    EXPECT_EQ(store.FindRecordByAnnot(Handle(2)).page, 3);
    EXPECT_EQ(store.FindRecordByUniqueID(L"ai_plugin_none").page, -1);
    EXPECT_EQ(store.GetPageIdxByAnnotUniqueID(L"ai_plugin_none"), -1);

    // A null handle renames but keeps the handle; a cleared handle is no annotation any more.
    store.SetAnnot(first, L"ai_plugin_renamed", nullptr);
    EXPECT_EQ(store.FindAnnot(first).annot, Handle(1));
    EXPECT_EQ(store.FindAnnot(first).uniqueIDName, L"ai_plugin_renamed");
    EXPECT_EQ(store.GetRecordAnnot(L"ai_plugin_same"), Handle(2));  // now the only one
    store.ClearAnnotHandle(first);
    EXPECT_FALSE(store.IsAnnotated(first));
    EXPECT_EQ(store.GetRecordAnnot(L"ai_plugin_renamed"), nullptr);
    EXPECT_EQ(store.FindRecordByAnnot(Handle(1)).page, -1);
    EXPECT_EQ(store.FindRecordByAnnot(nullptr).page, 0);
    store.EraseAnnot(first);
    EXPECT_EQ(store.FindAnnot(first).uniqueIDName, L"");
    EXPECT_EQ(store.FindRecordByUniqueID(L"ai_plugin_renamed").page, -1);
}

// Records that run over a page break keep their pieces, and a list is shared only with a list
// that holds the same pieces.
TEST(SearchResultStoreTest, PiecesComeBackAndKeepListsApart) {
    SearchResultStore store;
    SearchRecord stored = Record(L"f", 1, 40, {NdxRect{1, 2, 3, 4}});
    stored.pieces = {SearchPiece{L"f", 2, 0, 3, 0, L"k"}};
    store.SetResults(L"f", L"k", {stored});
    store.SetResults(L"f", L"k2", {Record(L"f", 1, 40, {NdxRect{1, 2, 3, 4}}, L"k2")});
    const SearchRecord spanning = store.GetResult(L"f", L"k", 0);
    ASSERT_EQ(spanning.pieces.size(), 1u);
    EXPECT_EQ(spanning.pieces[0].page, 2);
    EXPECT_EQ(spanning.pieces[0].end, 3);
    EXPECT_EQ(spanning.file, L"f");
    EXPECT_EQ(spanning.searchKey, L"k");
    EXPECT_TRUE(store.GetResult(L"f", L"k2", 0).pieces.empty());
    EXPECT_EQ(store.GetResult(L"f", L"k2", 0).searchKey, L"k2");

    // Annotation entries of both: the pieces take no part in the key, the search key does.
    store.SetAnnot(spanning, L"ai_plugin_a", Handle(1));
    store.SetAnnot(store.GetResult(L"f", L"k2", 0), L"ai_plugin_b", Handle(2));
    EXPECT_EQ(store.annots().size(), 2u);
    EXPECT_EQ(store.FindRecordByAnnot(Handle(2)).searchKey, L"k2");
    store.EraseAnnot(store.FindRecordByUniqueID(L"ai_plugin_a"));
    EXPECT_FALSE(store.IsAnnotated(spanning));
    EXPECT_EQ(store.GetRecordAnnot(L"ai_plugin_b"), Handle(2));
}

}  // namespace
