// Records that run over a page break keep their pieces in the result store, and a list is shared
// only with a list that holds the same pieces.
#include <gtest/gtest.h>

#include "redaction/search_result_store.h"

namespace {

SearchRecord Spanning(std::vector<SearchPiece> pieces) {
    SearchRecord r;
    r.file = L"f";
    r.searchKey = L"k";
    r.page = 1;
    r.start = 40;
    r.end = 45;
    r.index = 0;
    r.rects = {NdxRect{1, 2, 3, 4}};
    r.pieces = std::move(pieces);
    return r;
}

TEST(SearchResultPiecesTest, PiecesComeBackAndKeepListsApart) {
    SearchResultStore store;
    const SearchPiece next{L"f", 2, 0, 3, 0, L"k"};
    store.SetResults(L"f", L"k", {Spanning({next})});
    SearchRecord plain = Spanning({});
    plain.searchKey = L"k2";
    store.SetResults(L"f", L"k2", {plain});
    const SearchRecord spanning = store.GetResult(L"f", L"k", 0);
    ASSERT_EQ(spanning.pieces.size(), 1u);
    EXPECT_EQ(spanning.pieces[0].page, 2);
    EXPECT_EQ(spanning.pieces[0].end, 3);
    EXPECT_EQ(spanning.file, L"f");
    EXPECT_EQ(spanning.searchKey, L"k");
    EXPECT_TRUE(store.GetResult(L"f", L"k2", 0).pieces.empty());
    EXPECT_EQ(store.GetResult(L"f", L"k2", 0).searchKey, L"k2");

    // Annotation entries of both: the pieces take no part in the key, the search key does.
    store.SetAnnot(spanning, L"ai_plugin_a", reinterpret_cast<HostAnnot>(1));
    store.SetAnnot(store.GetResult(L"f", L"k2", 0), L"ai_plugin_b", reinterpret_cast<HostAnnot>(2));
    EXPECT_EQ(store.annots().size(), 2u);
    EXPECT_EQ(store.FindRecordByAnnot(reinterpret_cast<HostAnnot>(2)).searchKey, L"k2");
    store.EraseAnnot(store.FindRecordByUniqueID(L"ai_plugin_a"));
    EXPECT_FALSE(store.IsAnnotated(spanning));
    EXPECT_EQ(store.GetRecordAnnot(L"ai_plugin_b"), reinterpret_cast<HostAnnot>(2));
}

}  // namespace
