#include <gtest/gtest.h>

#include "util/utf.h"

namespace {

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

// The UTF-16 routines that wide text goes through where wchar_t has 16 bits.
TEST(UtfTest, Utf16PairsCombineAndLoneSurrogatesAreReplaced) {
    const struct {
        std::u16string units;
        std::string utf8;
    } cases[] = {
        {u"a\u00e9\U0001F600", "a\xC3\xA9\xF0\x9F\x98\x80"},
        {{u'x', char16_t(0xD83D)}, "x\xEF\xBF\xBD"},                         // high at the end
        {{char16_t(0xD83D), u'y'}, "\xEF\xBF\xBDy"},                         // high, no low
        {{char16_t(0xDE00), char16_t(0xD83D)}, "\xEF\xBF\xBD\xEF\xBF\xBD"},  // reversed
        {{char16_t(0xD83D), char16_t(0xD83D), char16_t(0xDE00)}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Utf16ToUtf8(c.units), c.utf8) << c.utf8;
        EXPECT_EQ(ToUtf8(FromUtf16(c.units)), c.utf8) << c.utf8;
        EXPECT_EQ(Utf16ToUtf8(Utf8ToUtf16(c.utf8)), c.utf8) << c.utf8;
    }
    EXPECT_EQ(Utf8ToUtf16("\xF0\x9F\x98\x80\xED\xA0\x80"),
              (std::u16string{0xD83D, 0xDE00, 0xFFFD}));
}

}  // namespace
