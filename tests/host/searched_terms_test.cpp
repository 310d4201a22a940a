// The searched terms under an apply's areas: by page, each needle once and in needle order,
// however many matches a page holds and however often a search is repeated.
#include <gtest/gtest.h>

#include <limits>

#include "searched_terms.h"

namespace pdfhost {
namespace {

using engine::Rect;

engine::RedactionAreas AreasOf(std::initializer_list<Rect> rects) {
    engine::RedactionAreas areas;
    for (const Rect& r : rects)
        areas.Add(r);
    return areas;
}

TEST(SearchedTermsTest, NeedlesWhoseMatchesTouchTheAreas) {
    SearchedTerms terms;
    const float inf = std::numeric_limits<float>::infinity();
    terms.Record(0, U"tall", {Rect{500, -inf, 510, inf}});
    terms.Record(0, U"nan", {Rect{std::numeric_limits<float>::quiet_NaN(), 0, 600, 800}});
    // A crowded page: a match every 10 points in a 100 x 100 grid, recorded twice over.
    for (int pass = 0; pass < 2; ++pass) {
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x) {
                const float left = static_cast<float>(x * 4);
                const float bottom = static_cast<float>(y * 8);
                terms.Record(0, U"ab", {Rect{left, bottom, left + 3, bottom + 7}});
            }
        }
    }
    terms.Record(0, U"flipped", {Rect{700, 30, 690, 20}});  // right and top given first
    terms.Record(1, U"other page", {Rect{0, 0, 1000, 1000}});

    struct Case {
        const char* what;
        engine::RedactionAreas areas;
        std::vector<std::u32string> expected;
    };
    const Case cases[] = {
        {"one match", AreasOf({Rect{1, 1, 2, 2}}), {U"ab"}},
        {"in a gap", AreasOf({Rect{3.2f, 1, 3.8f, 2}}), {}},
        {"just above a row's top edge", AreasOf({Rect{1, 7, 2, 7.5f}}), {}},
        {"a flipped box", AreasOf({Rect{691, 21, 699, 29}}), {U"flipped"}},
        {"the tall one far down", AreasOf({Rect{501, -5000, 502, -4000}}), {U"tall"}},
        {"two areas, needle order",
         AreasOf({Rect{695, 22, 696, 23}, Rect{505, 1, 506, 2}}),
         {U"flipped", U"tall"}},
        {"everything", AreasOf({Rect{-10, -10, 2000, 2000}}), {U"ab", U"flipped", U"tall"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(terms.Under(0, c.areas), c.expected) << c.what;
    // Matches recorded after a question are found by the next one.
    terms.Record(0, U"late", {Rect{3000, 3000, 3010, 3010}});
    EXPECT_EQ(terms.Under(0, AreasOf({Rect{3001, 3001, 3002, 3002}})),
              std::vector<std::u32string>{U"late"});
    EXPECT_TRUE(terms.Under(2, AreasOf({Rect{0, 0, 1000, 1000}})).empty());
}

}  // namespace
}  // namespace pdfhost
