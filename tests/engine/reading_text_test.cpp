// Matching as a reader reads: folding, joined hyphenation, stored spaces, right-to-left text in
// visual order, and input that is large or odd.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/annotation_text_finder.h"
#include "engine/reading_text.h"
#include "engine/text_finder.h"
#include "engine_test_support.h"
#include "raw_pdf.h"

namespace pdfhost::engine {
namespace {

using testing_support::CaseName;
using testing_support::EngineTest;
using testing_support::RawDocument;
using testing_support::RawPage;
using testing_support::RawPdf;
using testing_support::Ref;

using Matches = std::vector<TextMatch>;

Matches Find(const PageText& text, std::u32string_view needle, FindOptions options = {}) {
    const std::optional<TextPattern> pattern = TextPattern::Compile(needle, options);
    return pattern ? pattern->FindAll(text) : Matches{};
}

// The page's characters that each match covers.
std::vector<std::u32string> Found(const PageText& text, std::u32string_view needle,
                                  FindOptions options = {}) {
    std::vector<std::u32string> slices;
    for (const TextMatch& match : Find(text, needle, options))
        slices.push_back(text.Slice(match.first, match.count));
    return slices;
}

struct FoldingCase {
    const char* description;
    std::u32string page;
    std::u32string needle;
    FindOptions options;
    std::vector<std::u32string> found;
};

const FoldingCase kFoldingCases[] = {
    {"ligature on the page", U"the \ufb01nance office", U"finance", {}, {U"\ufb01nance"}},
    {"ligature in the needle", U"the finance office", U"\ufb01nance", {}, {U"finance"}},
    {"full-width letters",
     U"Mr \uff2a\uff2f\uff28\uff2e here",
     U"john",
     {},
     {U"\uff2a\uff2f\uff28\uff2e"}},
    {"full-width digits", U"No. \uff11\uff12\uff13", U"123", {}, {U"\uff11\uff12\uff13"}},
    {"full-width keeps case when asked",
     U"\uff2a\uff2f\uff28\uff2e",
     U"john",
     {.matchCase = true},
     {}},
    {"full-width with its case",
     U"\uff2a\uff2f\uff28\uff2e",
     U"JOHN",
     {.matchCase = true},
     {U"\uff2a\uff2f\uff28\uff2e"}},
    {"sharp s folds to ss",
     U"Gro\u00dfstra\u00dfe 5",
     U"GROSSSTRASSE",
     {},
     {U"Gro\u00dfstra\u00dfe"}},
    {"final sigma",
     U"\u039f\u0394\u039f\u03a3 1",
     U"\u03bf\u03b4\u03bf\u03c2",
     {},
     {U"\u039f\u0394\u039f\u03a3"}},
    {"Cyrillic case",
     U"\u0410\u041d\u041d\u0410 \u0430\u043d\u043d\u0430",
     U"\u0430\u043d\u043d\u0430",
     {},
     {U"\u0410\u041d\u041d\u0410", U"\u0430\u043d\u043d\u0430"}},
    {"soft hyphen inside a word",
     U"confi\u00addential",
     U"confidential",
     {},
     {U"confi\u00addential"}},
    {"soft hyphen in the needle", U"confidential", U"confi\u00addential", {}, {U"confidential"}},
    {"diacritics stay distinct",
     U"resume r\u00e9sum\u00e9",
     U"r\u00e9sum\u00e9",
     {},
     {U"r\u00e9sum\u00e9"}},
    {"no diacritic does not find one", U"r\u00e9sum\u00e9", U"resume", {}, {}},
    {"decomposed page, composed needle",
     U"re\u0301sume\u0301",
     U"r\u00e9sum\u00e9",
     {},
     {U"re\u0301sume\u0301"}},
    {"combining mark in the needle", U"caf\u00e9 cafe", U"cafe\u0301", {}, {U"caf\u00e9"}},
    {"a mark alone", U"cafe\u0301", U"\u0301", {}, {U"\u0301"}},
    {"lone surrogate matches itself",
     U"a\xd800"
     "b",
     U"\xd800",
     {},
     {U"\xd800"}},
    {"lone surrogate in the needle", U"ab", U"a\xdc00", {}, {}},
    {"five scripts",
     U"Ana \u039b\u03af\u03bd\u03b1 \u0410\u043d\u043d\u0430 \u05d0\u05e0\u05d4 \u5b89\u5a1c",
     U"\u5b89\u5a1c",
     {},
     {U"\u5b89\u5a1c"}},
    {"whole word among scripts",
     U"\u0410\u043d\u043d\u0430\u5b89 \u0410\u043d\u043d\u0430",
     U"\u0430\u043d\u043d\u0430",
     {.wholeWord = true},
     {U"\u0410\u043d\u043d\u0430"}},
};

class FoldingTest : public ::testing::TestWithParam<FoldingCase> {};

TEST_P(FoldingTest, FindsWhatAReaderTakesForTheNeedle) {
    const FoldingCase& c = GetParam();
    EXPECT_EQ(Found(PageText::OfPlainText(c.page), c.needle, c.options), c.found);
}

INSTANTIATE_TEST_SUITE_P(Table, FoldingTest, ::testing::ValuesIn(kFoldingCases),
                         [](const auto& info) { return CaseName(info.param.description); });

TEST(ReadingNeedleTest, NothingToFindInMarksOfNothing) {
    EXPECT_FALSE(TextPattern::Compile(U"\u00ad\u200b", {}).has_value());
    EXPECT_FALSE(TextPattern::Compile(U" \u00ad \u3000", {}).has_value());
    EXPECT_TRUE(TextPattern::Compile(U"\xdfff", {}).has_value());
}

// Sizes where matching that restarted inside a run, or went back over the page, would take
// minutes: whitespace runs are taken once, matches go on where the last one ended.
TEST(ReadingNeedleTest, LongPagesAreReadOnce) {
    const std::u32string letters(100000, U'x');
    EXPECT_EQ(Find(PageText::OfPlainText(letters), U"x").size(), 100000u);
    EXPECT_EQ(Find(PageText::OfPlainText(letters), U"xxy").size(), 0u);
    const std::u32string spaces = std::u32string(200000, U' ') + U"y";
    EXPECT_EQ(Find(PageText::OfPlainText(spaces), U" y"), (Matches{{0, 200001}}));
    EXPECT_EQ(Find(PageText::OfPlainText(spaces), U" z").size(), 0u);
}

struct LinesCase {
    const char* description;
    std::vector<std::string> lines;
    std::u32string needle;
    FindOptions options;
    std::vector<std::u32string> found;
    std::size_t boxes;  // line boxes of the first match
};

const LinesCase kLinesCases[] = {
    {"hyphenated word whole",
     {"The confiden-", "tiality clause"},
     U"confidentiality",
     {},
     {U"confiden-tiality"},
     2},
    {"hyphenated word as typeset",
     {"The confiden-", "tiality clause"},
     U"confiden-tiality",
     {},
     {U"confiden-tiality"},
     2},
    {"hyphenated word as a whole word",
     {"The confiden-", "tiality clause"},
     U"CONFIDENTIALITY",
     {.wholeWord = true},
     {U"confiden-tiality"},
     2},
    {"phrase over the join",
     {"Call Jo-", "hanna Smith now"},
     U"johanna smith",
     {},
     {U"Jo-hanna Smith"},
     2},
    {"first part alone", {"The confiden-", "tiality clause"}, U"confiden", {}, {U"confiden"}, 1},
    {"digits are not joined", {"pages 12-", "14"}, U"1214", {}, {}, 0},
    {"a hyphen after a space is no hyphenation", {"a -", "tiality"}, U"atiality", {}, {}, 0},
    {"no join without a hyphen", {"confiden", "tiality"}, U"confidentiality", {}, {}, 0},
    {"hyphen ending the last line", {"only confiden-"}, U"confidentiality", {}, {}, 0},
    {"hyphen ending the last line, first part",
     {"only confiden-"},
     U"confiden-",
     {},
     {U"confiden-"},
     1},
};

class ReadingLinesTest : public EngineTest, public ::testing::WithParamInterface<LinesCase> {};

TEST_P(ReadingLinesTest, FindsWordsAcrossLineEnds) {
    const LinesCase& c = GetParam();
    const Document document =
        factory_.Build(PdfDescription{.pages = {PageDescription::TextLines(c.lines)}});
    const PageText text = PageText::OfPage(document, 0);
    EXPECT_EQ(Found(text, c.needle, c.options), c.found);
    const Matches matches = Find(text, c.needle, c.options);
    if (!matches.empty()) {
        EXPECT_EQ(text.LineBoxes(matches[0].first, matches[0].count).size(), c.boxes);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, ReadingLinesTest, ::testing::ValuesIn(kLinesCases),
                         [](const auto& info) { return CaseName(info.param.description); });

// The lines a reader reads: a hyphen at a line end stays unless the break is plainly hyphenation
// (the page writes the word whole elsewhere, and nowhere with the hyphen).
TEST_F(ReadingLinesTest, ReaderLinesKeepAHyphenThatMayBelongToTheWord) {
    const std::vector<std::pair<std::vector<std::string>, std::vector<std::u32string>>> cases = {
        {{"The confiden-", "tiality clause", "pages 12-", "14"},
         {U"The confiden-tiality clause", U"pages 12-", U"14"}},
        {{"Write an e-", "mail to us"}, {U"Write an e-mail to us"}},
        {{"Keep it confiden-", "tial, all confidential"},
         {U"Keep it confidential, all confidential"}},
        {{"An e-", "mail, or e-mail and email"}, {U"An e-mail, or e-mail and email"}},
    };
    for (const auto& [lines, read] : cases) {
        const Document document =
            factory_.Build(PdfDescription{.pages = {PageDescription::TextLines(lines)}});
        EXPECT_EQ(ReadingText::Of(PageText::OfPage(document, 0), Folding::kReading).Lines(), read);
    }
}

TEST_F(ReadingLinesTest, APageOfOneHundredThousandLetters) {
    const std::string letters(100000, 'x');
    PageDescription page;
    page.Add(TextItem{.x = 1, .y = 700, .size = 0.005F, .text = letters + "y"});
    const Document document = factory_.Build(PdfDescription{.pages = {page}});
    const PageText text = PageText::OfPage(document, 0);
    ASSERT_EQ(text.CharCount(), 100001);
    EXPECT_EQ(Find(text, U"x").size(), 100000u);
    EXPECT_EQ(Find(text, U"xy"), (Matches{{99999, 2}}));
}

// A page in Helvetica whose text is told by a ToUnicode map: `map` is the map's bfchar lines.
class MappedTextTest : public EngineTest {
  protected:
    PageText PageWith(const std::string& map, int entries, const std::string& content) {
        RawPdf pdf;
        const std::string cmap =
            "/CIDInit /ProcSet findresource begin 12 dict begin begincmap\n"
            "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
            "/CMapName /Test-UCS def /CMapType 2 def\n"
            "1 begincodespacerange <00> <FF> endcodespacerange\n" +
            std::to_string(entries) + " beginbfchar\n" + map +
            "endbfchar\nendcmap CMapName currentdict /CMap defineresource pop end end\n";
        const int toUnicode = pdf.AddStream("", cmap);
        RawPage page{content};
        page.resources =
            "<< /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
            "/Encoding /WinAnsiEncoding /ToUnicode " +
            Ref(toUnicode) + " >> >> >>";
        const std::string path = PathOf("mapped.pdf");
        testing_support::WriteBytes(path, RawDocument(pdf, {page}));
        document_ = std::make_unique<Document>(Document::Open(context_, path));
        return PageText::OfPage(*document_, 0);
    }

    std::unique_ptr<Document> document_;
};

// "Q" is drawn for a ligature whose text is "fi " (letters and a space in one glyph).
const char kLigatureMap[] =
    "<45> <0045>\n<72> <0072>\n<51> <006600690020>\n<6E> <006E>\n<64> <0064>\n<65> <0065>\n";

TEST_F(MappedTextTest, ASpaceStoredInsideAWordIsReadPast) {
    const PageText text = PageWith(kLigatureMap, 6, "BT /F1 12 Tf 72 720 Td (ErQnder) Tj ET");
    ASSERT_EQ(text.Slice(0, text.CharCount()), U"Erfi nder");
    EXPECT_EQ(Found(text, U"Erfinder"), (std::vector<std::u32string>{U"Erfi nder"}));
    EXPECT_EQ(Found(text, U"erfinder", {.wholeWord = true}),
              (std::vector<std::u32string>{U"Erfi nder"}));
    EXPECT_EQ(ReadingText::Of(text, Folding::kReading).Lines(),
              (std::vector<std::u32string>{U"Erfinder"}));
}

TEST_F(MappedTextTest, AWordGapIsNoStoredSpace) {
    const PageText text = PageWith(kLigatureMap, 6, "BT /F1 12 Tf 72 720 Td (Er nder) Tj ET");
    EXPECT_TRUE(Found(text, U"Ernder").empty());
    EXPECT_EQ(Found(text, U"er nder").size(), 1u);
}

// "Q" is drawn for a full-width space: moved back over its own width it stands inside a word.
TEST_F(MappedTextTest, AFullWidthSpaceBetweenTouchingGlyphsIsReadPast) {
    const PageText text =
        PageWith("<51> <3000>\n", 1, "BT /F1 12 Tf 72 720 Td [(ErQ) 778 (nder)] TJ ET");
    EXPECT_EQ(Found(text, U"Ernder", {.wholeWord = true}).size(), 1u);
    EXPECT_EQ(ReadingText::Of(text, Folding::kReading).Lines(),
              (std::vector<std::u32string>{U"Ernder"}));
    const PageText apart = PageWith("<51> <3000>\n", 1, "BT /F1 12 Tf 72 720 Td (ErQnder) Tj ET");
    EXPECT_TRUE(Found(apart, U"Ernder").empty());
}

TEST_F(MappedTextTest, ASoftHyphenAtALineEndJoinsTheWord) {
    const PageText text = PageWith("<2D> <00AD>\n", 1,
                                   "BT /F1 12 Tf 72 720 Td (confiden-) Tj 0 -18 Td (tiality) Tj "
                                   "0 -18 Td (in-line) Tj ET");
    EXPECT_EQ(Found(text, U"confidentiality"),
              (std::vector<std::u32string>{U"confiden\u00adtiality"}));
    EXPECT_EQ(Found(text, U"inline"), (std::vector<std::u32string>{U"in\u00adline"}));
    EXPECT_EQ(ReadingText::Of(text, Folding::kReading).Lines(),
              (std::vector<std::u32string>{U"confidentiality", U"inline"}));
}

// Hebrew drawn left to right, as a visual-order file stores it: "a", "b", "c" show alef, bet and
// gimel, so "(cba)" shows the word alef-bet-gimel to a reader going right to left.
const char kHebrewMap[] = "<61> <05D0>\n<62> <05D1>\n<63> <05D2>\n";

TEST_F(MappedTextTest, RightToLeftTextInVisualOrderIsFoundByItsLogicalWord) {
    const PageText text =
        PageWith(kHebrewMap, 3, "BT /F1 12 Tf 72 720 Td (cba ba) Tj 0 -18 Td (Toni: cba) Tj ET");
    ASSERT_EQ(text.Slice(0, 3), U"\u05d2\u05d1\u05d0");
    const Matches matches = Find(text, U"\u05d0\u05d1\u05d2");
    ASSERT_EQ(matches.size(), 2u);
    EXPECT_EQ(matches[0], (TextMatch{0, 3}));
    EXPECT_EQ(text.Slice(matches[1].first, matches[1].count), U"\u05d2\u05d1\u05d0");
    EXPECT_TRUE(Find(text, U"\u05d2\u05d1\u05d0").empty());
    EXPECT_EQ(ReadingText::Of(text, Folding::kReading).Lines(),
              (std::vector<std::u32string>{U"\u05d0\u05d1 \u05d0\u05d1\u05d2",
                                           U"Toni: \u05d0\u05d1\u05d2"}));
}

TEST_F(MappedTextTest, RightToLeftTextStoredAsReadKeepsItsOrder) {
    // Each glyph is moved back over itself and one more width: drawn right to left.
    const PageText text =
        PageWith(kHebrewMap, 3, "BT /F1 12 Tf 300 720 Td [(a) 1112 (b) 1112 (c)] TJ ET");
    EXPECT_EQ(Found(text, U"\u05d0\u05d1\u05d2"),
              (std::vector<std::u32string>{U"\u05d0\u05d1\u05d2"}));
}

// Public files with right-to-left text (tests/data/real, see its README), stored in visual or in
// logical order: each word is found once or more as it is typed, in logical order, whole, on one
// line, and the page's reading lines hold it as typed.
struct RightToLeftFile {
    const char* file;
    std::vector<std::u32string> words;
};

void PrintTo(const RightToLeftFile& file, std::ostream* out) {
    *out << file.file;
}

const RightToLeftFile kRightToLeftFiles[] = {
    // A name drawn in visual order, and a line mirrored.
    {"hebrew_mirrored.pdf", {U"\u05d1\u05e0\u05d9\u05de\u05d9\u05df"}},
    // Hebrew sentences in visual order; a line whose runs (words, a number, brackets) are stored
    // in logical order, each drawn left to right.
    {"issue11656.pdf",
     {U"\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd",
      U"\u05dc\u05e4\u05d9 \u05e1\u05e2\u05d9\u05e3 15",
      U"\u05dc\u05d7\u05d5\u05e7 \u05de\u05d1\u05e7\u05e8 \u05d4\u05de\u05d3\u05d9\u05e0\u05d4"}},
    // Arabic in presentation forms among four other scripts, drawn by free-text annotations.
    {"issue20504.pdf",
     {U"\u0645\u0631\u062d\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645",
      U"\u4f60\u597d\u4e16\u754c"}},
    // Arabic with marks (shadda) on its letters.
    {"issue5677.pdf",
     {U"\u0645\u0627\u0630\u0627", U"\u0627\u0644\u0633\u0651\u064a\u0651\u062f\u0629"}},
    // Hebrew labels in a Type 3 font.
    {"issue12705.pdf", {U"\u05de\u05d7\u05dc\u05e7\u05d4", U"\u05e2\u05d5\u05d1\u05d3"}},
};

class RightToLeftFileTest : public EngineTest,
                            public ::testing::WithParamInterface<RightToLeftFile> {};

TEST_P(RightToLeftFileTest, WordsAreFoundAsTyped) {
    const RightToLeftFile& file = GetParam();
    Document document =
        Document::Open(context_, std::string(PDFHOST_TEST_DATA) + "/real/" + file.file);
    std::vector<PageText> texts{PageText::OfPage(document, 0)};
    for (AnnotationText& drawn : AnnotationTextsOf(document, 0))
        texts.push_back(std::move(drawn.text));
    std::string shown;
    for (const PageText& text : texts) {
        for (const std::u32string& line : ReadingText::Of(text, Folding::kReading).Lines())
            shown += EncodeUtf8(line) + "\n";
    }
    for (const std::u32string& word : file.words) {
        std::size_t found = 0;
        for (const PageText& text : texts) {
            for (const TextMatch& match : Find(text, word, {.wholeWord = true})) {
                EXPECT_EQ(text.LineBoxes(match.first, match.count).size(), 1u);
                ++found;
            }
        }
        EXPECT_GT(found, 0u) << EncodeUtf8(word) << " in\n" << shown;
        EXPECT_NE(shown.find(EncodeUtf8(word)), std::string::npos) << EncodeUtf8(word);
    }
}

INSTANTIATE_TEST_SUITE_P(Public, RightToLeftFileTest, ::testing::ValuesIn(kRightToLeftFiles),
                         [](const auto& info) { return CaseName(info.param.file); });

}  // namespace
}  // namespace pdfhost::engine
