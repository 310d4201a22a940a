// PDF text strings read back as wide text: the single-byte encoding where it leaves Latin-1, and
// UTF-16BE with a pair of surrogates, a lone one replaced.
#include <gtest/gtest.h>

#include "redaction/pdf_text.h"

namespace {

TEST(PdfTextTest, SingleByteAndUtf16Strings) {
    EXPECT_EQ(DecodePdfText("ai_plugin_\xE9\x84\xA0\x18"), L"ai_plugin_\u00E9\u2014\u20AC\u02D8");
    EXPECT_EQ(DecodePdfText(std::string("\xFE\xFF\x00\x61\xD8\x3D\xDE\x00", 8)), L"a\U0001F600");
    EXPECT_EQ(DecodePdfText(std::string("\xFE\xFF\xDC\x00", 4)), L"\uFFFD");
    EXPECT_EQ(DecodePdfText(std::string("\xFE\xFF\xD8\x3D\x00\x62", 6)), L"\uFFFDb");
    EXPECT_EQ(DecodePdfText("\xEF\xBB\xBFid\xC3\xA9"), L"id\u00E9");
    EXPECT_EQ(DecodePdfText(""), L"");
}

}  // namespace
