// Finding and cutting removed texts in PDF strings and XML: case, whitespace, encodings, and
// what must never change (bytes around a cut, binary strings, markup).
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "engine/pdf_text_string.h"
#include "engine/removed_text_matcher.h"
#include "engine/xml_text_scrub.h"

namespace pdfhost::engine {
namespace {

using namespace std::string_literals;

TEST(RemovedTextMatcherTest, CutsWithoutCaseAndAcrossWhitespace) {
    const RemovedTextMatcher matcher({U"Ana Lind", U"  ", U"Lind", U"ana lind berg"});
    struct Case {
        std::u32string text;
        std::u32string expected;
    };
    const Case cases[] = {
        {U"to ANA LIND now", U"to  now"},
        {U"to Ana\n\t Lind", U"to "},
        {U"Ana Lind Berg!", U"!"},  // the longest text that matches wins
        {U"Lindgren", U"gren"},     // inside a word too
        {U"Anna Lind", U"Anna "},   // what does not match stays
        {U"ÄNA LIND", U"ÄNA "},     // letters differ: only "Lind" goes
        {U"", U""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(matcher.Erase(c.text), c.expected);
    EXPECT_TRUE(RemovedTextMatcher({U" \t"}).Empty()) << "whitespace alone removes nothing";
}

TEST(RemovedTextMatcherTest, FindsTextInBytesOfEveryEncoding) {
    const RemovedTextMatcher matcher({U"Lind"});
    const std::string held[] = {"x LIND y",
                                "\xff\xfe"
                                "L\0i\0n\0d\0"s,
                                "\xfe\xff\0L\0i\0n\0d"s, "\0\0\0L\0i\0n\0d"s};
    for (const std::string& bytes : held)
        EXPECT_TRUE(matcher.OccursInBytes(bytes)) << bytes;
    EXPECT_FALSE(matcher.OccursInBytes("L i n d, Lin d"));
}

TEST(PdfTextStringTest, CutsOnlyTheMatchAndKeepsEveryOtherByte) {
    const RemovedTextMatcher matcher({U"Ana Lind", U"é"});
    struct Case {
        std::string bytes;
        std::optional<std::string> expected;
    };
    const Case cases[] = {
        {"Dear Ana Lind,", "Dear ,"},
        {"caf\xe9 \x95 Ana LIND", "caf \x95 "},                    // PDFDoc
        {"\xfe\xff\0A\0n\0a\0 \0L\0i\0n\0d\0!"s, "\xfe\xff\0!"s},  // UTF-16BE
        {"\xfe\xff\xd8\x3d\xde\x00\0A\0N\0A\0 \0l\0i\0n\0d"s, "\xfe\xff\xd8\x3d\xde\x00"s},
        {"\xef\xbb\xbf"
         "caf\xc3\xa9",
         "\xef\xbb\xbf"
         "caf"},                         // UTF-8
        {"nothing here", std::nullopt},  // untouched
        {"\x01\x02"
         "Ana Lind",
         std::nullopt},  // binary
        {"\xfe\xff\0A\0"s, std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ScrubPdfText(c.bytes, matcher), c.expected) << c.bytes;
}

TEST(XmlTextScrubTest, CutsValuesAndKeepsTheMarkup) {
    const RemovedTextMatcher matcher({U"lind", U"dc"});
    EXPECT_EQ(ScrubXmlText("<dc:creator dc:a='Ana Lind' b=\"LIND\">Ana Lind<!-- lind -->"
                           "<![CDATA[lind]]></dc:creator>",
                           matcher),
              "<dc:creator dc:a='Ana ' b=\"\">Ana <!--  --><![CDATA[]]></dc:creator>");
    EXPECT_EQ(ScrubXmlText("<a:b c='x'>nothing</a:b>", matcher), std::nullopt);
    EXPECT_EQ(ScrubXmlText("<a b='lind", matcher), "<a b='") << "a truncated packet";
}

}  // namespace
}  // namespace pdfhost::engine
