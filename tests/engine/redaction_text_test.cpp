// The text that an apply removes: the characters under each Redact annotation's areas.
#include <gtest/gtest.h>

#include "annot_test_support.h"
#include "engine/redaction_text.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::WordRects;

class RedactionTextTest : public EngineTest {};

TEST_F(RedactionTextTest, TextUnderEachAnnotationByRunOfCharacters) {
    Document document = Document::Open(
        context_,
        WritePdf("doc.pdf",
                 PdfDescription{.pages = {PageDescription::TextLines(
                                    {"Client Jane Roe here", "Next line", "Ref 4711 and 4712"})}}));
    const PageText text = PageText::OfPage(document, 0);
    struct Case {
        std::vector<std::string> words;  // one annotation over their rectangles
        std::vector<std::u32string> expected;
    };
    const Case cases[] = {
        {{"Jane"}, {U"Jane"}},
        {{"Jane", "Roe"}, {U"Jane", U"Roe"}},  // two quads, a space between them uncovered
        {{"4711", "4712"}, {U"4711", U"4712"}},
        {{"Next"}, {U"Next"}},  // the neighbouring lines stay out
    };
    for (const Case& c : cases) {
        std::vector<Rect> rects;
        for (const std::string& word : c.words) {
            const std::vector<Rect> found = WordRects(document, 0, word);
            rects.insert(rects.end(), found.begin(), found.end());
        }
        const AnnotationId id = Annotations(document).Create(
            0, MatchAnnotation(document, 0, "Redact", rects, "ai_plugin_t"), kDocumentTag, -1);
        EXPECT_EQ(TextsUnder(text, AreasOfRedaction(document, id.object)), c.expected)
            << c.words.front();
    }
}

}  // namespace
}  // namespace pdfhost::engine
