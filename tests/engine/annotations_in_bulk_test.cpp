// Annotations added to a page that holds many already, and taken off many at a time: the page's
// own /Annots array keeps its identity and order, and popups go with their annotations.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "annot_test_support.h"
#include "engine/annotations.h"
#include "raw_pdf.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::RawPdf;
using testing_support::Ref;

testing_support::RawPage WithAnnots(std::string annots) {
    testing_support::RawPage page;
    page.annots = std::move(annots);
    return page;
}

constexpr const char* kSquare = "<< /Type /Annot /Subtype /Square /Rect [10 10 20 20] >>";

class AnnotationsInBulkTest : public EngineTest {
  protected:
    Document OpenRaw(RawPdf& pdf, const std::vector<testing_support::RawPage>& pages) {
        const std::string path = PathOf("raw.pdf");
        testing_support::WriteBytes(path, testing_support::RawDocument(pdf, pages));
        return Document::Open(context_, path);
    }
    static AnnotationId Redact(Document& document, int page, int index = -1) {
        return Annotations(document).Create(
            page, MatchAnnotation(document, page, "Redact", {Rect{50, 50, 90, 60}}, "r"),
            kDocumentTag, index);
    }
    // The object number the page's /Annots entry refers to; 0 for a direct array.
    static int AnnotsReference(Document& document, int page) {
        const ObjPtr page_obj = document.PageObject(page, "page");
        fz_context* ctx = document.fz();
        return CallMupdf(ctx, "annots", [&] {
            pdf_obj* annots = pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots));
            return pdf_is_indirect(ctx, annots) ? pdf_to_num(ctx, annots) : 0;
        });
    }
};

TEST_F(AnnotationsInBulkTest, NewAnnotationsJoinThePagesOwnArrayInPlace) {
    // Page 0 has its annotations in an array object of its own; page 1 a link among them;
    // page 2 none at all.
    RawPdf pdf;
    const int square = pdf.Add(kSquare);
    const int link = pdf.Add("<< /Type /Annot /Subtype /Link /Rect [0 0 5 5] /Dest [0 /Fit] >>");
    const int array = pdf.Add("[" + Ref(square) + "]");
    Document document =
        OpenRaw(pdf, {WithAnnots(Ref(array)), WithAnnots("[" + Ref(link) + "]"), WithAnnots("")});
    Annotations annotations(document);

    const AnnotationId last = Redact(document, 0);
    const AnnotationId first = Redact(document, 0, 0);
    EXPECT_EQ(annotations.OnPage(0), (std::vector<int>{first.object, square, last.object}));
    EXPECT_EQ(AnnotsReference(document, 0), array) << "the array object stays the page's";

    const AnnotationId beside_link = Redact(document, 1);
    EXPECT_EQ(annotations.OnPage(1), (std::vector<int>{link, beside_link.object}));

    const AnnotationId alone = Redact(document, 2);
    EXPECT_EQ(annotations.OnPage(2), (std::vector<int>{alone.object}));
    EXPECT_EQ(annotations.Subtype(alone.object), "Redact");

    // Saved and read again, every page holds what it held.
    const std::string path = PathOf("saved.pdf");
    document.SaveFull(path);
    Document saved = Document::Open(context_, path);
    Annotations reread(saved);
    EXPECT_EQ(reread.OnPage(0).size(), 3u);
    EXPECT_EQ(reread.OnPage(1).size(), 2u);
    EXPECT_EQ(reread.OnPage(2).size(), 1u);
}

TEST_F(AnnotationsInBulkTest, RemoveAllTakesTheTargetsWithTheirPopupsAndKeepsTheRestInOrder) {
    RawPdf pdf;
    Document document = OpenRaw(pdf, {WithAnnots("")});
    Annotations annotations(document);
    std::vector<AnnotationId> made;
    for (int i = 0; i < 6; ++i)
        made.push_back(Redact(document, 0));
    // A popup naming made[0] as its parent, one that made[2] names, and one of made[3].
    const auto popup = [&](const char* key, int parent) {
        PdfValue entries = PdfValue::Dictionary();
        entries.Set("Subtype", PdfValue::Name("Popup"));
        entries.Set(key, PdfValue::Reference(parent, kDocumentTag));
        return annotations.Create(0, entries, kDocumentTag, -1).object;
    };
    const int parented = popup("Parent", made[0].object);
    const int named = popup("P", made[4].object);
    const int kept_popup = popup("Parent", made[3].object);
    {
        const ObjPtr dict = annotations.Dictionary(made[2].object);
        fz_context* ctx = document.fz();
        CallMupdf(ctx, "popup", [&] {
            pdf_dict_put_drop(ctx, dict.get(), PDF_NAME(Popup),
                              pdf_new_indirect(ctx, document.pdf(), named, 0));
        });
    }
    const std::uint64_t before = document.Revision();

    annotations.RemoveAll(0,
                          {made[0].object, made[2].object, made[5].object, made[0].object, 9999});
    EXPECT_EQ(annotations.OnPage(0),
              (std::vector<int>{made[1].object, made[3].object, made[4].object, kept_popup}))
        << "made[4] stays though its popup went with made[2], which names it";
    EXPECT_GT(document.Revision(), before);

    const std::uint64_t unchanged = document.Revision();
    annotations.RemoveAll(0, {made[0].object, parented});
    EXPECT_EQ(document.Revision(), unchanged) << "nothing of it stood on the page";
    EXPECT_EQ(annotations.OnPage(0).size(), 4u);
}

TEST_F(AnnotationsInBulkTest, ALongArrayInThePageBecomesAnObjectOfItsOwnInOrder) {
    // Put back into the page, a direct array is walked entry by entry; a reference is not.
    RawPdf pdf;
    std::vector<int> squares;
    std::string entries;
    for (int i = 0; i < 40; ++i) {
        squares.push_back(pdf.Add(kSquare));
        entries += Ref(squares.back()) + " ";
    }
    Document document = OpenRaw(pdf, {WithAnnots("[" + entries + "]")});
    ASSERT_EQ(AnnotsReference(document, 0), 0);

    const AnnotationId first = Redact(document, 0, 0);
    const int array = AnnotsReference(document, 0);
    EXPECT_NE(array, 0);
    const AnnotationId last = Redact(document, 0);
    EXPECT_EQ(AnnotsReference(document, 0), array) << "moved once";
    std::vector<int> expected{first.object};
    expected.insert(expected.end(), squares.begin(), squares.end());
    expected.push_back(last.object);
    EXPECT_EQ(Annotations(document).OnPage(0), expected);

    const std::string path = PathOf("saved.pdf");
    document.SaveFull(path);
    Document saved = Document::Open(context_, path);
    EXPECT_EQ(Annotations(saved).OnPage(0).size(), expected.size());
}

}  // namespace
}  // namespace pdfhost::engine
