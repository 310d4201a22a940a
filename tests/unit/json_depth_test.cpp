// The nesting limit at its exact boundary: the deepest text accepted and the first one refused,
// for arrays, objects and a mix, and brackets inside strings left uncounted.
#include <gtest/gtest.h>

#include <string>

#include "host/json_depth.h"

namespace {

std::string Nested(int depth, char open, char close) {
    return std::string(static_cast<std::size_t>(depth), open) +
           std::string(static_cast<std::size_t>(depth), close);
}

TEST(JsonDepthTest, TheDeepestAcceptedAndTheFirstRefused) {
    EXPECT_TRUE(JsonDepthWithin(Nested(256, '[', ']')));
    EXPECT_FALSE(JsonDepthWithin(Nested(257, '[', ']')));
    EXPECT_TRUE(JsonDepthWithin(Nested(256, '{', '}')));
    EXPECT_FALSE(JsonDepthWithin(Nested(257, '{', '}')));
    EXPECT_FALSE(JsonDepthWithin("{\"a\":" + Nested(256, '[', ']') + "}"));
    // Closing a level makes room for another one beside it.
    EXPECT_TRUE(JsonDepthWithin(Nested(256, '[', ']') + Nested(256, '[', ']')));
    // Brackets in strings, escaped quotes included, are text.
    EXPECT_TRUE(JsonDepthWithin("[\"\\\"" + std::string(300, '[') + "\"]"));
    EXPECT_TRUE(JsonDepthWithin(Nested(2, '[', ']'), 2));
    EXPECT_FALSE(JsonDepthWithin(Nested(3, '[', ']'), 2));
}

}  // namespace
