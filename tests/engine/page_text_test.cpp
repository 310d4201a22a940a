// Text on pages and finding it: characters numbered line by line with their geometry, needles
// matched as a reader reads (case, whole words, folding, joined hyphenation, stored spaces,
// right-to-left text in visual order), input that is large or odd, and the text layer
// recognised on a scanned page.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "engine/annotation_text_finder.h"
#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/ocr_layer.h"
#include "engine/reading_text.h"
#include "engine/text_finder.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using Matches = std::vector<TextMatch>;
using Texts = std::vector<std::u32string>;

// The matches of `needle` in `text` from character `start` on.
Matches Find(const PageText& text, std::u32string_view needle, FindOptions options = {},
             int start = 0) {
    const std::optional<TextPattern> pattern = TextPattern::Compile(needle, options);
    EXPECT_TRUE(pattern.has_value());
    return pattern ? pattern->FindAll(text, start) : Matches{};
}

Matches FindIn(std::u32string_view haystack, std::u32string_view needle, FindOptions options = {}) {
    return Find(PageText::OfPlainText(haystack), needle, options);
}

class PageTextTest : public EngineTest {
  protected:
    Document TwoLines() { return factory_.Build(TextPage({"Hello world", "Second line"})); }
};

TEST_F(PageTextTest, CharactersAreNumberedLineByLineWithoutIndexesForLineBreaks) {
    const Document document = TwoLines();
    const PageText text = PageText::OfPage(document, 0);

    ASSERT_EQ(text.CharCount(), 22);
    EXPECT_EQ(text.Slice(0, 22), U"Hello worldSecond line");
    ASSERT_EQ(text.Lines().size(), 2u);
    EXPECT_EQ(text.Lines()[1].first, 11);
    EXPECT_EQ(text.Chars()[10].line, 0);
    EXPECT_EQ(text.Chars()[11].line, 1);
    EXPECT_EQ(text.Chars()[0].folded, U'h');
}

TEST_F(PageTextTest, GeometryIsInPdfPageSpaceWhateverThePageRotation) {
    for (const int rotation : {0, 90, 180, 270}) {
        SCOPED_TRACE(rotation);
        Document document = TwoLines();
        const ObjPtr page = document.PageObject(0, "rotate");
        CallMupdf(document.fz(), "rotate",
                  [&] { pdf_dict_put_int(document.fz(), page.get(), PDF_NAME(Rotate), rotation); });
        document.MarkChanged();
        const PageText text = PageText::OfPage(document, 0);
        ASSERT_EQ(text.CharCount(), 22);

        const TextChar& h = text.Chars()[0];
        EXPECT_NEAR(h.origin.x, 72, 0.01);
        EXPECT_NEAR(h.origin.y, 720, 0.01);
        EXPECT_NEAR(h.box.left, 72, 0.5);
        EXPECT_LT(h.box.bottom, 720);
        EXPECT_GT(h.box.top, 728);
        EXPECT_NEAR(h.size, 12, 0.01);
        EXPECT_NEAR(text.Lines()[0].direction.x, 1, 1e-4);
        EXPECT_NEAR(text.Lines()[0].direction.y, 0, 1e-4);

        // The second line stands 18 pt lower: one box per line, the lower one first in order.
        const std::vector<Rect> boxes = text.LineBoxes(6, 10);
        ASSERT_EQ(boxes.size(), 2u);
        EXPECT_NEAR(boxes[0].bottom - boxes[1].bottom, 18, 0.5);
        EXPECT_NEAR(boxes[1].left, 72, 0.5);
        EXPECT_GT(boxes[0].left, 100);
    }
}

TEST_F(PageTextTest, CharacterClasses) {
    for (const char32_t c : {U'a', U'7', U'\u00e9', U'\u0416'})
        EXPECT_TRUE(IsWordChar(c)) << static_cast<int>(c);
    EXPECT_FALSE(IsWordChar(U'-') || IsWordChar(U' '));
    EXPECT_TRUE(IsSpaceChar(U'\u00a0') && IsSpaceChar(U'\r'));
    EXPECT_FALSE(IsSpaceChar(U'_'));
    EXPECT_EQ(FoldCase(U'\u00c9'), U'\u00e9');
    // One, two, three and four bytes a character.
    const std::string bytes = "J\xc3\xa9r\xc3\xb4me \xe4\xb8\xad\xf0\x9f\x98\x80";
    EXPECT_EQ(DecodeUtf8(bytes), U"J\u00e9r\u00f4me \u4e2d\U0001F600");
    EXPECT_EQ(EncodeUtf8(U"J\u00e9r\u00f4me \u4e2d\U0001F600"), bytes);
}

TEST(TextPatternTest, CaseAndWholeWordFlags) {
    EXPECT_EQ(FindIn(U"John JOHN john", U"john"), (Matches{{0, 4}, {5, 4}, {10, 4}}));
    EXPECT_EQ(FindIn(U"John JOHN john", U"John", {.matchCase = true}), (Matches{{0, 4}}));
    EXPECT_EQ(FindIn(U"J\u00c9R\u00d4ME", U"j\u00e9r\u00f4me"), (Matches{{0, 6}}));

    const std::u32string_view words = U"art party smart art7 (art) art";
    EXPECT_EQ(FindIn(words, U"art").size(), 6u);
    EXPECT_EQ(FindIn(words, U"art", {.wholeWord = true}), (Matches{{0, 3}, {22, 3}, {27, 3}}));
    EXPECT_EQ(FindIn(U"ART art", U"art", {.matchCase = true, .wholeWord = true}),
              (Matches{{4, 3}}));
}

TEST(TextPatternTest, MatchesDoNotOverlapAndStartWhereAsked) {
    EXPECT_EQ(FindIn(U"aaaaa", U"aa"), (Matches{{0, 2}, {2, 2}}));
    EXPECT_EQ(Find(PageText::OfPlainText(U"ab ab ab"), U"ab", {}, 1), (Matches{{3, 2}, {6, 2}}));
    EXPECT_EQ(Find(PageText::OfPlainText(U"ab ab"), U"ab", {}, 99), Matches{});
    EXPECT_EQ(FindIn(U"nothing here", U"absent"), Matches{});
}

TEST(TextPatternTest, WhitespaceRunsMatchAnyWhitespaceAndMarksOfNothingFindNothing) {
    EXPECT_EQ(FindIn(U"John   Smith", U"John Smith"), (Matches{{0, 12}}));
    EXPECT_EQ(FindIn(U"John\u00a0Smith", U"John\r\nSmith"), (Matches{{0, 10}}));
    EXPECT_EQ(FindIn(U"JohnSmith", U"John Smith"), Matches{});
    EXPECT_EQ(FindIn(U"x file", U"\ufb01le"), (Matches{{2, 4}}));
    EXPECT_FALSE(TextPattern::Compile(U"", {}).has_value());
    EXPECT_FALSE(TextPattern::Compile(U" \r\n\t", {}).has_value());
    EXPECT_FALSE(TextPattern::Compile(U"\u00ad\u200b", {}).has_value());
    EXPECT_FALSE(TextPattern::Compile(U" \u00ad \u3000", {}).has_value());
    EXPECT_TRUE(TextPattern::Compile(U"\xdfff", {}).has_value());
}

TEST_F(PageTextTest, APhraseFoundAcrossALineBreakHasOneRectanglePerLine) {
    const Document document = factory_.Build(PdfDescription{
        .pages = {PageDescription::TextLines({"Please call John", "Smith today, or John Smith"})}});
    const PageText text = PageText::OfPage(document, 0);
    const Matches matches = Find(text, U"john smith");

    // "Please call John" has 16 characters, so the second line starts at 16.
    ASSERT_EQ(matches, (Matches{{12, 9}, {32, 10}}));
    const std::vector<Rect> rects = text.LineBoxes(matches[0].first, matches[0].count);
    ASSERT_EQ(rects.size(), 2u);
    // "John" ends the first line (baseline 720), "Smith" opens the second (baseline 702).
    EXPECT_LT(rects[0].bottom, 720);
    EXPECT_GT(rects[0].top, 728);
    EXPECT_LT(rects[1].bottom, 702);
    EXPECT_GT(rects[1].top, 710);
    EXPECT_LT(rects[1].top, 720);
    EXPECT_NEAR(rects[1].left, 72, 0.5);
    EXPECT_GT(rects[0].left, 130);
    EXPECT_LT(rects[0].right, 200);

    // Letters never pair across a line break; a phrase on one line gives one rectangle.
    EXPECT_EQ(Find(text, U"JohnSmith"), Matches{});
    EXPECT_EQ(text.LineBoxes(matches[1].first, matches[1].count).size(), 1u);
}

// The lines a reader reads on the page.
Texts ReaderLines(const PageText& text) {
    return ReadingText::Of(text, Folding::kReading).Lines();
}

// The page's characters that each match covers.
Texts Found(const PageText& text, std::u32string_view needle, FindOptions options = {}) {
    Texts slices;
    for (const TextMatch& match : Find(text, needle, options))
        slices.push_back(text.Slice(match.first, match.count));
    return slices;
}

struct FoldingCase {
    const char* description;
    std::u32string page;
    std::u32string needle;
    FindOptions options;
    Texts found;
};

const FoldingCase kFoldingCases[] = {
    {"ligature on the page", U"the ﬁnance office", U"finance", {}, {U"ﬁnance"}},
    {"ligature in the needle", U"the finance office", U"ﬁnance", {}, {U"finance"}},
    {"full-width letters", U"Mr ＪＯＨＮ here", U"john", {}, {U"ＪＯＨＮ"}},
    {"full-width digits", U"No. １２３", U"123", {}, {U"１２３"}},
    {"full-width keeps case when asked", U"ＪＯＨＮ", U"john", {.matchCase = true}, {}},
    {"full-width with its case", U"ＪＯＨＮ", U"JOHN", {.matchCase = true}, {U"ＪＯＨＮ"}},
    {"sharp s folds to ss", U"Großstraße 5", U"GROSSSTRASSE", {}, {U"Großstraße"}},
    {"final sigma", U"ΟΔΟΣ 1", U"οδος", {}, {U"ΟΔΟΣ"}},
    {"Cyrillic case", U"АННА анна", U"анна", {}, {U"АННА", U"анна"}},
    {"soft hyphen in a word", U"confi\u00addential", U"confidential", {}, {U"confi\u00addential"}},
    {"soft hyphen in the needle", U"confidential", U"confi\u00addential", {}, {U"confidential"}},
    {"diacritics stay distinct", U"resume résumé", U"résumé", {}, {U"résumé"}},
    {"no diacritic does not find one", U"résumé", U"resume", {}, {}},
    {"decomposed page", U"re\u0301sume\u0301", U"résumé", {}, {U"re\u0301sume\u0301"}},
    {"combining mark in the needle", U"café cafe", U"cafe\u0301", {}, {U"café"}},
    {"a mark alone", U"cafe\u0301", U"\u0301", {}, {U"\u0301"}},
    {"lone surrogate matches itself", {U'a', 0xd800, U'b'}, U"\xd800", {}, {U"\xd800"}},
    {"lone surrogate in the needle", U"ab", U"a\xdc00", {}, {}},
    {"five scripts", U"Ana Λίνα Анна \u05d0\u05e0\u05d4 安娜", U"安娜", {}, {U"安娜"}},
    {"whole word among scripts", U"Анна安 Анна", U"анна", {.wholeWord = true}, {U"Анна"}},
};

class FoldingTest : public ::testing::TestWithParam<FoldingCase> {};

TEST_P(FoldingTest, FindsWhatAReaderTakesForTheNeedle) {
    const FoldingCase& c = GetParam();
    EXPECT_EQ(Found(PageText::OfPlainText(c.page), c.needle, c.options), c.found);
}

INSTANTIATE_TEST_SUITE_P(Table, FoldingTest, ::testing::ValuesIn(kFoldingCases),
                         [](const auto& info) { return CaseName(info.param.description); });

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
    Texts found;
    std::size_t boxes;  // line boxes of the first match
};

const std::vector<std::string> kHyphenated = {"The confiden-", "tiality clause"};

const LinesCase kLinesCases[] = {
    {"hyphenated word whole", kHyphenated, U"confidentiality", {}, {U"confiden-tiality"}, 2},
    {"hyphenated word as typeset", kHyphenated, U"confiden-tiality", {}, {U"confiden-tiality"}, 2},
    {"whole word", kHyphenated, U"CONFIDENTIALITY", {.wholeWord = true}, {U"confiden-tiality"}, 2},
    {"phrase", {"Call Jo-", "hanna Smith now"}, U"johanna smith", {}, {U"Jo-hanna Smith"}, 2},
    {"first part alone", kHyphenated, U"confiden", {}, {U"confiden"}, 1},
    {"digits are not joined", {"pages 12-", "14"}, U"1214", {}, {}, 0},
    {"a hyphen after a space is no hyphenation", {"a -", "tiality"}, U"atiality", {}, {}, 0},
    {"no join without a hyphen", {"confiden", "tiality"}, U"confidentiality", {}, {}, 0},
    {"hyphen ending the last line", {"only confiden-"}, U"confidentiality", {}, {}, 0},
    {"last line's hyphen, first part", {"only confiden-"}, U"confiden-", {}, {U"confiden-"}, 1},
};

class ReadingLinesTest : public EngineTest, public ::testing::WithParamInterface<LinesCase> {};

TEST_P(ReadingLinesTest, FindsWordsAcrossLineEnds) {
    const LinesCase& c = GetParam();
    const Document document = factory_.Build(TextPage(c.lines));
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
    const std::vector<std::pair<std::vector<std::string>, Texts>> cases = {
        {{"The confiden-", "tiality clause", "pages 12-", "14"},
         {U"The confiden-tiality clause", U"pages 12-", U"14"}},
        {{"Write an e-", "mail to us"}, {U"Write an e-mail to us"}},
        {{"Keep it confiden-", "tial, all confidential"},
         {U"Keep it confidential, all confidential"}},
        {{"An e-", "mail, or e-mail and email"}, {U"An e-mail, or e-mail and email"}},
    };
    for (const auto& [lines, read] : cases) {
        const Document document = factory_.Build(TextPage(lines));
        EXPECT_EQ(ReaderLines(PageText::OfPage(document, 0)), read);
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
    PageText PageWith(const std::string& map, const std::string& content) {
        RawPdf pdf;
        const std::string cmap =
            "/CIDInit /ProcSet findresource begin 12 dict begin begincmap\n"
            "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
            "/CMapName /Test-UCS def /CMapType 2 def\n"
            "1 begincodespacerange <00> <FF> endcodespacerange\n" +
            std::to_string(std::count(map.begin(), map.end(), '\n')) + " beginbfchar\n" + map +
            "endbfchar\nendcmap CMapName currentdict /CMap defineresource pop end end\n";
        const int toUnicode = pdf.AddStream("", cmap);
        RawPage page{content};
        page.resources =
            "<< /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
            "/Encoding /WinAnsiEncoding /ToUnicode " +
            Ref(toUnicode) + " >> >> >>";
        document_ = std::make_unique<Document>(OpenBytes(RawDocument(pdf, {page})));
        return PageText::OfPage(*document_, 0);
    }

    std::unique_ptr<Document> document_;
};

// "Q" is drawn for a ligature whose text is "fi " (letters and a space in one glyph).
const char kLigatureMap[] =
    "<45> <0045>\n<72> <0072>\n<51> <006600690020>\n<6E> <006E>\n<64> <0064>\n<65> <0065>\n";

TEST_F(MappedTextTest, ASpaceStoredInsideAWordIsReadPast) {
    const PageText text = PageWith(kLigatureMap, "BT /F1 12 Tf 72 720 Td (ErQnder) Tj ET");
    ASSERT_EQ(text.Slice(0, text.CharCount()), U"Erfi nder");
    EXPECT_EQ(Found(text, U"Erfinder"), (Texts{U"Erfi nder"}));
    EXPECT_EQ(Found(text, U"erfinder", {.wholeWord = true}), (Texts{U"Erfi nder"}));
    EXPECT_EQ(ReaderLines(text), (Texts{U"Erfinder"}));
    // A word gap is no stored space.
    const PageText gap = PageWith(kLigatureMap, "BT /F1 12 Tf 72 720 Td (Er nder) Tj ET");
    EXPECT_TRUE(Found(gap, U"Ernder").empty());
    EXPECT_EQ(Found(gap, U"er nder").size(), 1u);
}

// "Q" is drawn for a full-width space: moved back over its own width it stands inside a word.
TEST_F(MappedTextTest, AFullWidthSpaceBetweenTouchingGlyphsIsReadPast) {
    const PageText text =
        PageWith("<51> <3000>\n", "BT /F1 12 Tf 72 720 Td [(ErQ) 778 (nder)] TJ ET");
    EXPECT_EQ(Found(text, U"Ernder", {.wholeWord = true}).size(), 1u);
    EXPECT_EQ(ReaderLines(text), (Texts{U"Ernder"}));
    const PageText apart = PageWith("<51> <3000>\n", "BT /F1 12 Tf 72 720 Td (ErQnder) Tj ET");
    EXPECT_TRUE(Found(apart, U"Ernder").empty());
}

TEST_F(MappedTextTest, ASoftHyphenAtALineEndJoinsTheWord) {
    const PageText text = PageWith("<2D> <00AD>\n",
                                   "BT /F1 12 Tf 72 720 Td (confiden-) Tj 0 -18 Td (tiality) Tj "
                                   "0 -18 Td (in-line) Tj ET");
    EXPECT_EQ(Found(text, U"confidentiality"), (Texts{U"confiden\u00adtiality"}));
    EXPECT_EQ(Found(text, U"inline"), (Texts{U"in\u00adline"}));
    EXPECT_EQ(ReaderLines(text), (Texts{U"confidentiality", U"inline"}));
}

// Hebrew drawn left to right, as a visual-order file stores it: "a", "b", "c" show alef, bet and
// gimel, so "(cba)" shows the word alef-bet-gimel to a reader going right to left.
const char kHebrewMap[] = "<61> <05D0>\n<62> <05D1>\n<63> <05D2>\n";

TEST_F(MappedTextTest, RightToLeftTextIsFoundByItsLogicalWordInVisualOrStoredOrder) {
    const PageText text =
        PageWith(kHebrewMap, "BT /F1 12 Tf 72 720 Td (cba ba) Tj 0 -18 Td (Toni: cba) Tj ET");
    ASSERT_EQ(text.Slice(0, 3), U"\u05d2\u05d1\u05d0");
    const Matches matches = Find(text, U"\u05d0\u05d1\u05d2");
    ASSERT_EQ(matches.size(), 2u);
    EXPECT_EQ(matches[0], (TextMatch{0, 3}));
    EXPECT_EQ(text.Slice(matches[1].first, matches[1].count), U"\u05d2\u05d1\u05d0");
    EXPECT_TRUE(Find(text, U"\u05d2\u05d1\u05d0").empty());
    EXPECT_EQ(ReaderLines(text),
              (Texts{U"\u05d0\u05d1 \u05d0\u05d1\u05d2", U"Toni: \u05d0\u05d1\u05d2"}));
    // Stored as read: each glyph moved back over itself and one more width, drawn right to left.
    const PageText asRead =
        PageWith(kHebrewMap, "BT /F1 12 Tf 300 720 Td [(a) 1112 (b) 1112 (c)] TJ ET");
    EXPECT_EQ(Found(asRead, U"\u05d0\u05d1\u05d2"), (Texts{U"\u05d0\u05d1\u05d2"}));
}

// Public files with right-to-left text (tests/data/real, see its README), stored in visual or in
// logical order: each word is found once or more as it is typed, in logical order, whole, on one
// line, and the page's reading lines hold it as typed.
struct RightToLeftFile {
    const char* file;
    Texts words;
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
        for (const std::u32string& line : ReaderLines(text))
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

class OcrLayerTest : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        if (!OcrRecognizer::FindDataFolder("eng").has_value())
            GTEST_SKIP() << "no English recognition data installed";
    }

    // A page that shows `lines` only as a picture, as a scanner makes it.
    std::string WriteScan(const std::string& name, const std::vector<std::string>& lines) {
        PageDescription text;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            text.Add(TextItem{
                .x = 72, .y = 700 - 40.0f * static_cast<float>(i), .size = 24, .text = lines[i]});
        }
        const Document typed = factory_.Build(PdfDescription{.pages = {text}});
        auto picture = std::make_shared<RgbImage>(typed.Render(0, 150));
        PageDescription scan;
        scan.Add(ImageItem{.placement = {0, 0, 612, 792}, .picture = std::move(picture)});
        return WritePdf(name, PdfDescription{.pages = {scan}});
    }
};

TEST_F(OcrLayerTest, AScannedPageBecomesSearchableWithoutChangingHowItLooks) {
    const std::string path = WriteScan("scan.pdf", {"INVOICE NUMBER 48213", "Payment due soon"});
    Document document = Document::Open(context_, path);
    ASSERT_EQ(PageText::OfPage(document, 0).CharCount(), 0);
    const RgbImage before = document.Render(0, 72);

    OcrRecognizer recognizer("eng");
    EXPECT_GE(AddOcrTextLayer(document, 0, recognizer), 6);

    const PageText text = PageText::OfPage(document, 0);
    EXPECT_THAT(EncodeUtf8(text.Slice(0, text.CharCount())),
                AllOf(HasSubstr("INVOICE NUMBER 48213"), HasSubstr("Payment due soon")));
    // The words stand where the picture shows them: the first line above the second.
    const Matches invoice = Find(text, U"INVOICE");
    const Matches payment = Find(text, U"Payment");
    ASSERT_EQ(invoice.size(), 1u);
    ASSERT_EQ(payment.size(), 1u);
    const Rect first = text.LineBoxes(invoice[0].first, invoice[0].count).front();
    const Rect second = text.LineBoxes(payment[0].first, payment[0].count).front();
    EXPECT_NEAR(first.left, 72, 6);
    EXPECT_GT(first.bottom, second.top - 2);
    EXPECT_NEAR(first.bottom, 700, 10);

    EXPECT_EQ(document.Render(0, 72).pixels, before.pixels);
    EXPECT_THAT(PdfToText(Saved(document, "searchable.pdf")), HasSubstr("INVOICE NUMBER 48213"));
}

TEST_F(OcrLayerTest, ABlankPageGetsNoText) {
    Document document = factory_.Build(PdfDescription{.pages = {PageDescription::Blank()}});
    OcrRecognizer recognizer("eng");
    EXPECT_EQ(AddOcrTextLayer(document, 0, recognizer), 0);
    EXPECT_EQ(PageText::OfPage(document, 0).CharCount(), 0);
    EXPECT_THROW(AddOcrTextLayer(document, 1, recognizer), Error);
}

}  // namespace
}  // namespace pdfhost::engine
