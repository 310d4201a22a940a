// Annotations made from the entries a plug-in gives: what the saved file holds, and taking
// annotations off a page and putting them back.
#include <gtest/gtest.h>

#include "annot_test_support.h"
#include "engine/annotations.h"
#include "engine/error.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::Numbers;
using testing_support::PageObjectNumber;
using testing_support::WordRects;

// Reads the entries of one object of a saved file.
class SavedObject {
  public:
    SavedObject(Document& document, int object)
        : ctx_(document.fz()), dict_(ctx_, CallMupdf(ctx_, "load", [&] {
                                         return pdf_load_object(ctx_, document.pdf(), object);
                                     })) {}

    bool Has(const char* key) const { return Get(key) != nullptr; }
    std::string Name(const char* key) const {
        return CallMupdf(ctx_, "name", [&] { return pdf_to_name(ctx_, Get(key)); });
    }
    std::string String(const char* key) const {
        pdf_obj* value = Get(key);
        const char* bytes = CallMupdf(ctx_, "string", [&] { return pdf_to_str_buf(ctx_, value); });
        const std::size_t size =
            CallMupdf(ctx_, "string", [&] { return pdf_to_str_len(ctx_, value); });
        return std::string(bytes, size);
    }
    int Integer(const char* key) const {
        return CallMupdf(ctx_, "int", [&] { return pdf_to_int(ctx_, Get(key)); });
    }
    std::vector<float> Numbers(const char* key) const {
        pdf_obj* array = Get(key);
        std::vector<float> values;
        const int count = CallMupdf(ctx_, "len", [&] { return pdf_array_len(ctx_, array); });
        for (int i = 0; i < count; ++i) {
            values.push_back(
                CallMupdf(ctx_, "real", [&] { return pdf_array_get_real(ctx_, array, i); }));
        }
        return values;
    }
    // The object number an entry refers to; 0 when it holds no reference.
    int Reference(const char* key) const {
        return CallMupdf(ctx_, "ref", [&] {
            pdf_obj* value = pdf_dict_gets(ctx_, dict_.get(), key);
            return pdf_is_indirect(ctx_, value) ? pdf_to_num(ctx_, value) : 0;
        });
    }

  private:
    pdf_obj* Get(const char* key) const {
        return CallMupdf(ctx_, "get", [&] { return pdf_dict_gets(ctx_, dict_.get(), key); });
    }

    fz_context* ctx_;
    ObjPtr dict_;
};

std::vector<float> Flat(const Rect& r) {
    return {r.left, r.bottom, r.right, r.top};
}

class AnnotationsTest : public EngineTest {
  protected:
    Document Open(const PdfDescription& layout) {
        return Document::Open(context_, WritePdf("doc.pdf", layout));
    }
    // Saves and opens the saved file again.
    Document Reopen(Document& document) {
        const std::string path = PathOf("saved.pdf");
        document.SaveFull(path);
        return Document::Open(context_, path);
    }
};

TEST_F(AnnotationsTest, MatchAnnotationEntriesStandInTheSavedFileExactly) {
    Document document = Open(PdfDescription{
        .pages = {PageDescription::TextLines({"a secret word", "and another secret"})}});
    const std::vector<Rect> two_lines = {WordRects(document, 0, "secret word").front(),
                                         WordRects(document, 0, "and").front()};
    const std::vector<Rect> one_line = WordRects(document, 0, "another");
    Annotations annotations(document);
    const std::uint64_t before = document.Revision();
    const AnnotationId highlight = annotations.Create(
        0, MatchAnnotation(document, 0, "Highlight", two_lines, "ai_plugin_h1"), kDocumentTag, -1);
    const AnnotationId redact = annotations.Create(
        0, MatchAnnotation(document, 0, "Redact", one_line, "ai_plugin_r1"), kDocumentTag, -1);
    const int page_object = PageObjectNumber(document, 0);
    EXPECT_GT(document.Revision(), before);

    Document saved = Reopen(document);
    Annotations reread(saved);
    EXPECT_EQ(reread.OnPage(0), (std::vector<int>{highlight.object, redact.object}));

    const SavedObject h(saved, highlight.object);
    EXPECT_EQ(h.Name("Type"), "Annot");
    EXPECT_EQ(h.Name("Subtype"), "Highlight");
    EXPECT_EQ(h.Numbers("Rect"), Flat(testing_support::Union(two_lines)));
    EXPECT_EQ(h.Integer("F"), 4);
    const Rect& a = two_lines[0];
    const Rect& b = two_lines[1];
    EXPECT_EQ(
        h.Numbers("QuadPoints"),
        (std::vector<float>{a.left, a.bottom, a.right, a.bottom, a.left, a.top, a.right, a.top,
                            b.left, b.bottom, b.right, b.bottom, b.left, b.top, b.right, b.top}));
    EXPECT_EQ(h.Numbers("C"), (std::vector<float>{1, 1, 0}));
    EXPECT_FALSE(h.Has("IC"));
    EXPECT_EQ(h.String("Subj"), "Highlight");
    EXPECT_EQ(h.Reference("P"), page_object);
    EXPECT_EQ(h.String("Contents"), "a comment");
    EXPECT_EQ(h.String("NM"), "ai_plugin_h1");
    EXPECT_TRUE(h.Has("AP")) << "an annotation needs an appearance to show";

    const SavedObject r(saved, redact.object);
    EXPECT_EQ(r.Name("Subtype"), "Redact");
    EXPECT_EQ(r.Numbers("Rect"), Flat(one_line.front()));
    EXPECT_EQ(r.Numbers("C"), (std::vector<float>{1, 0, 0}));
    EXPECT_EQ(r.Numbers("IC"), (std::vector<float>{0, 0, 0}));
    EXPECT_EQ(r.String("Subj"), "Redact");
    EXPECT_FALSE(r.Has("Contents"));
    EXPECT_EQ(r.String("NM"), "ai_plugin_r1");
    EXPECT_TRUE(r.Has("AP"));
    EXPECT_EQ(reread.Subtype(redact.object), "Redact");
    EXPECT_EQ(reread.RectOf(redact.object), one_line.front());
}

TEST_F(AnnotationsTest, RemovedAnnotationGoesWithItsPopupAndComesBackInPlace) {
    Document document = Open(PdfDescription{.pages = {PageDescription::TextLines({"one two"})}});
    Annotations annotations(document);
    const auto rects = WordRects(document, 0, "one");
    const AnnotationId first = annotations.Create(
        0, MatchAnnotation(document, 0, "Highlight", rects, "a"), kDocumentTag, -1);
    const AnnotationId second =
        annotations.Create(0, MatchAnnotation(document, 0, "Redact", rects, "b"), kDocumentTag, -1);
    PdfValue popup = PdfValue::Dictionary();
    popup.Set("Subtype", PdfValue::Name("Popup"));
    popup.Set("P", PdfValue::Reference(second.object, kDocumentTag));
    const AnnotationId attached = annotations.Create(0, popup, kDocumentTag, -1);
    const AnnotationId third =
        annotations.Create(0, MatchAnnotation(document, 0, "Redact", rects, "c"), kDocumentTag, 1);
    EXPECT_EQ(annotations.OnPage(0),
              (std::vector<int>{first.object, third.object, second.object, attached.object}));

    const auto removed = annotations.Remove(second);
    ASSERT_TRUE(removed.has_value());
    EXPECT_EQ(annotations.OnPage(0), (std::vector<int>{first.object, third.object}));
    EXPECT_FALSE(annotations.IsOnPage(second));
    EXPECT_FALSE(annotations.Remove(second).has_value());

    EXPECT_TRUE(annotations.Restore(*removed));
    EXPECT_EQ(annotations.OnPage(0),
              (std::vector<int>{first.object, third.object, second.object, attached.object}));
    EXPECT_FALSE(annotations.Restore(*removed)) << "it stands already";
}

TEST_F(AnnotationsTest, RefusesEntriesItCannotWriteAndLeavesThePage) {
    Document other_source = Open(PdfDescription{.pages = {PageDescription::Blank()}});
    Annotations annotations(other_source);
    PdfValue no_subtype = PdfValue::Dictionary();
    no_subtype.Set("Rect", Numbers({0, 0, 10, 10}));
    EXPECT_THROW(annotations.Create(0, no_subtype, kDocumentTag, -1), Error);

    PdfValue foreign = PdfValue::Dictionary();
    foreign.Set("Subtype", PdfValue::Name("Square"));
    foreign.Set("P", PdfValue::Reference(PageObjectNumber(other_source, 0), kDocumentTag + 1));
    EXPECT_THROW(annotations.Create(0, foreign, kDocumentTag, -1), Error);
    EXPECT_THROW(annotations.Create(3, foreign, kDocumentTag, -1), Error);
    EXPECT_TRUE(annotations.OnPage(0).empty());
}

}  // namespace
}  // namespace pdfhost::engine
