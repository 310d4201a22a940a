#include <gtest/gtest.h>

#include "util/utf.h"

namespace {

TEST(UtfTest, RoundTripsEveryPlane) {
    const std::wstring text = L"a\u00e9\u4e2d\U0001F600z";
    EXPECT_EQ(ToUtf8(text), "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80z");
    EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
}

TEST(UtfTest, MalformedInputBecomesReplacementCharacters) {
    EXPECT_EQ(FromUtf8("a\xFF"
                       "b"),
              L"a\uFFFDb");
    EXPECT_EQ(FromUtf8("\xC3"), L"\uFFFD");          // truncated
    EXPECT_EQ(FromUtf8("\xC0\xAF"), L"\uFFFD");      // overlong
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), L"\uFFFD");  // surrogate
    EXPECT_EQ(FromUtf8("\xE4\xB8x"), L"\uFFFDx");    // broken continuation
    EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
}

}  // namespace
