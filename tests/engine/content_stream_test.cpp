#include <gtest/gtest.h>

#include "engine/content_stream.h"

namespace pdfhost::engine {
namespace {

TEST(PdfTextLiteralTest, EscapesAndMapsToLatin1) {
    EXPECT_EQ(PdfTextLiteral("plain text"), "(plain text)");
    EXPECT_EQ(PdfTextLiteral("a(b)c\\d"), "(a\\(b\\)c\\\\d)");
    EXPECT_EQ(PdfTextLiteral("tab\there\n"), "(tab\\011here\\012)");
    EXPECT_EQ(PdfTextLiteral("Zo\xC3\xAB M\xC3\xBCller"), "(Zo\xEB M\xFCller)");
    EXPECT_EQ(PdfTextLiteral("\xE2\x82\xAC 5 \xF0\x9F\x98\x80"), "(? 5 ?)");
    // Malformed, overlong and truncated sequences: one '?' per bad byte, nothing lost after.
    EXPECT_EQ(PdfTextLiteral("a\xFFz"), "(a?z)");
    EXPECT_EQ(PdfTextLiteral("\xC1\xA9"),
              "(?"
              "?)");
    EXPECT_EQ(PdfTextLiteral("end\xC3"), "(end?)");
}

TEST(ContentStreamTest, NumbersArePlainShortDecimals) {
    ContentStream content;
    content.MapUnitSquareTo({10.5f, 20.25f, 110.6f, 70.25f});
    content.Text("F1", 12, -0.0001f, 700.125f, "x");
    EXPECT_EQ(content.str(), "100.1 0 0 50 10.5 20.25 cm\nBT /F1 12 Tf 0 700.125 Td (x) Tj ET\n");
}

}  // namespace
}  // namespace pdfhost::engine
