// Redaction of known words in public real-world files (tests/data/real, see its README): the
// words are found as the plug-in finds them (page text and field values), boxed and applied;
// the saved file holds them nowhere, reopens in MuPDF and poppler, and keeps the rest.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>

#include "engine/field_text_finder.h"
#include "engine/hidden_text_scrubber.h"
#include "engine/redaction.h"
#include "engine/text_finder.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

struct RealDocument {
    const char* file;
    const char32_t* word;  // what is redacted, as MuPDF reads it from the page or a field
    const char* wordUtf8;  // the same, as pdftotext writes it
    const char* kept;      // text elsewhere on the pages that stays
    // Whether the file holds the word as plain bytes before (then it must not after the apply
    // and the removal of hidden copies, XFA packets included).
    bool inRawBytes;
    // Whether poppler's text is compared word by word: where glyphs were taken out, poppler may
    // join the words around them, whose letters then spell the word by chance.
    bool byWords = false;
};

const RealDocument kRealDocuments[] = {
    // A filled form (text fields with values and appearances).
    {"annotation-text-widget.pdf", U"Lorem", "Lorem", "Single line", true},
    // Combo and list boxes: the selected value of one, an option the others show and list.
    {"annotation-choice-widget.pdf", U"Dolor", "Dolor", "List box, single selection", true},
    // A 300 dpi scan with its recognised text.
    {"scan-bad.pdf", U"pdf.js", "pdf.js", "", false},
    // Arabic in a CID TrueType font, stored in visual order in presentation forms: found by the
    // word as it is typed, in logical order and plain letters.
    {"ArabicCIDTrueType.pdf", U"\u0627\u0644\u0639\u0631\u0628\u064A\u0629",
     "\u0627\uFEDF\uFECC\uFEAE\uFE91\uFEF4\uFE94", "", false},
    // Type 3 glyphs, which MuPDF reads as squares and triangles.
    {"Type3WordSpacing.pdf", U"\u25A1\u25B3\u25B3\u25A1", "abba", "baba", false, true},
    // Text drawn inside a tiling pattern.
    {"pattern_text_embedded_font.pdf", U"AbCdEf", "AbCdEf", "", false},
    // An invoice carrying its data as an XML attachment, whose file specification stands
    // directly in the catalogue's name tree.
    {"AzureInterior.pdf", U"Fremont", "Fremont", "Global Wholesaler", true},
};

void PrintTo(const RealDocument& document, std::ostream* out) {
    *out << document.file;
}

// Every place of `word` on each page: the boxes of its matches in the page text and in the
// values of the fields shown there.
std::vector<std::vector<Rect>> PlacesOf(Document& document, std::u32string_view word) {
    const auto pattern = TextPattern::Compile(word, FindOptions{});
    std::vector<std::vector<Rect>> pages;
    for (int page = 0; page < document.PageCount(); ++page) {
        std::vector<Rect>& rects = pages.emplace_back();
        const PageText text = PageText::OfPage(document, page);
        for (const TextMatch& match : pattern->FindAll(text))
            std::ranges::copy(text.LineBoxes(match.first, match.count), std::back_inserter(rects));
        for (const FieldMatch& match : FindInFieldValues(document, page, *pattern))
            rects.insert(rects.end(), match.rects.begin(), match.rects.end());
    }
    return pages;
}

class RealDocumentsTest : public EngineTest, public ::testing::WithParamInterface<RealDocument> {};

TEST_P(RealDocumentsTest, KnownWordsAreGoneAndTheFileStaysSound) {
    const RealDocument& real = GetParam();
    const std::string input = std::string(PDFHOST_TEST_DATA) + "/real/" + real.file;
    ASSERT_THAT(PdfToText(input), HasSubstr(real.wordUtf8));
    Document document = Document::Open(context_, input);
    std::vector<AnnotationId> boxes;
    const std::vector<std::vector<Rect>> places = PlacesOf(document, real.word);
    for (int page = 0; page < static_cast<int>(places.size()); ++page) {
        if (!places[page].empty())
            boxes.push_back(AddRedact(document, page, places[page]));
    }
    ASSERT_FALSE(boxes.empty()) << "the word is found";
    const RedactionReport report = Redactor(document).Apply(boxes, RedactionOptions{});
    EXPECT_TRUE(report.problems.empty()) << report.problems.front().reason;
    HiddenTextScrubber(document, {real.word}).Run();
    const std::string output = Saved(document, "out.pdf");

    const std::string text = PdfToText(output);
    if (real.byWords) {
        std::istringstream words(text);
        EXPECT_EQ(std::count(std::istream_iterator<std::string>(words),
                             std::istream_iterator<std::string>(), std::string(real.wordUtf8)),
                  0);
    } else {
        EXPECT_THAT(text, Not(HasSubstr(real.wordUtf8)));
    }
    EXPECT_THAT(text, HasSubstr(real.kept));
    if (real.inRawBytes) {
        const std::string word = real.wordUtf8;
        EXPECT_NE(InflatedBytes(context_, input, true).find(word), std::string::npos);
        EXPECT_EQ(InflatedBytes(context_, output).find(word), std::string::npos);
    }
    Document reopened = Document::Open(context_, output);
    EXPECT_TRUE(PlacesOf(reopened, real.word) ==
                std::vector<std::vector<Rect>>(static_cast<std::size_t>(reopened.PageCount())));
    EXPECT_THAT(PdfInfo(output), AllOf(HasSubstr("Pages:"), Not(HasSubstr("Error"))));
}

INSTANTIATE_TEST_SUITE_P(Public, RealDocumentsTest, ::testing::ValuesIn(kRealDocuments),
                         [](const auto& info) { return CaseName(info.param.file); });

}  // namespace
}  // namespace pdfhost::engine
