// Annotations made from the entries a plug-in gives: taking them off a page and putting them
// back, many at a time on a page that holds many, finding one from where it last stood, and
// entries that cannot be written. The page's own /Annots array keeps its identity and order.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/annotations.h"
#include "engine/error.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

class AnnotationsTest : public EngineTest {
  protected:
    // Opens a document of pages whose /Annots entries are `annots` ("" for none).
    Document OpenRaw(RawPdf& pdf, const std::vector<std::string>& annots) {
        std::vector<RawPage> pages;
        for (const std::string& entry : annots)
            pages.push_back(RawPage{.annots = entry});
        return OpenBytes(RawDocument(pdf, pages));
    }
    static AnnotationId Redact(Document& document, int page, int index = -1) {
        return AddRedact(document, page, {Rect{50, 50, 90, 60}}, "r", index);
    }
    // A popup whose `key` (/Parent or /P) names `parent`.
    static int Popup(Annotations& annotations, const char* key, int parent) {
        PdfValue entries = PdfValue::Dictionary();
        entries.Set("Subtype", PdfValue::Name("Popup"));
        entries.Set(key, PdfValue::Reference(parent, kDocumentTag));
        return annotations.Create(0, entries, kDocumentTag, -1).object;
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

TEST_F(AnnotationsTest, RemovedAnnotationGoesWithItsPopupAndComesBackInPlace) {
    Document document = OpenWritten(TextPage({"one two"}));
    Annotations annotations(document);
    const auto rects = WordRects(document, 0, "one");
    const AnnotationId first = annotations.Create(
        0, MatchAnnotation(document, 0, "Highlight", rects, "a"), kDocumentTag, -1);
    const AnnotationId second = AddRedact(document, 0, rects, "b");
    const int attached = Popup(annotations, "P", second.object);
    const AnnotationId third = AddRedact(document, 0, rects, "c", 1);
    const std::vector<int> all = {first.object, third.object, second.object, attached};
    EXPECT_EQ(annotations.OnPage(0), all);

    const auto removed = annotations.Remove(second);
    ASSERT_TRUE(removed.has_value());
    EXPECT_EQ(annotations.OnPage(0), (std::vector<int>{first.object, third.object}));
    EXPECT_FALSE(annotations.IsOnPage(second));
    EXPECT_FALSE(annotations.Remove(second).has_value());

    EXPECT_TRUE(annotations.Restore(*removed));
    EXPECT_EQ(annotations.OnPage(0), all);
    EXPECT_FALSE(annotations.Restore(*removed)) << "it stands already";

    // Off again after coming back, then a popup put on the page behind the engine's back: each
    // annotation still takes its popups along.
    EXPECT_EQ(annotations.Remove(second)->entries.size(), 2u);
    const ObjPtr page_obj = document.PageObject(0, "page");
    fz_context* ctx = document.fz();
    CallMupdf(ctx, "popup", [&] {
        pdf_obj* popup = pdf_add_new_dict(ctx, document.pdf(), 2);
        pdf_dict_put(ctx, popup, PDF_NAME(Subtype), PDF_NAME(Popup));
        pdf_dict_put_drop(ctx, popup, PDF_NAME(Parent),
                          pdf_new_indirect(ctx, document.pdf(), first.object, 0));
        pdf_array_push_drop(ctx, pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots)), popup);
    });
    EXPECT_EQ(annotations.Remove(first)->entries.size(), 2u);
    EXPECT_EQ(annotations.OnPage(0), (std::vector<int>{third.object}));
    // Standing twice, it leaves both places, also when looked for from where it last stood.
    CallMupdf(ctx, "twice", [&] {
        pdf_array_push_drop(ctx, pdf_dict_get(ctx, page_obj.get(), PDF_NAME(Annots)),
                            pdf_new_indirect(ctx, document.pdf(), third.object, 0));
    });
    EXPECT_EQ(annotations.Remove(third, 1)->entries.size(), 2u);
    EXPECT_TRUE(annotations.OnPage(0).empty());
}

TEST_F(AnnotationsTest, RefusesEntriesItCannotWriteAndLeavesThePage) {
    Document document = OpenWritten({.pages = {PageDescription::Blank()}});
    Annotations annotations(document);
    PdfValue no_subtype = PdfValue::Dictionary();
    no_subtype.Set("Rect", Numbers({0, 0, 10, 10}));
    EXPECT_THROW(annotations.Create(0, no_subtype, kDocumentTag, -1), Error);

    PdfValue foreign = PdfValue::Dictionary();
    foreign.Set("Subtype", PdfValue::Name("Square"));
    foreign.Set("P", PdfValue::Reference(PageObjectNumber(document, 0), kDocumentTag + 1));
    EXPECT_THROW(annotations.Create(0, foreign, kDocumentTag, -1), Error);
    EXPECT_THROW(annotations.Create(3, foreign, kDocumentTag, -1), Error);
    EXPECT_TRUE(annotations.OnPage(0).empty());
}

TEST_F(AnnotationsTest, NewAnnotationsJoinThePagesOwnArrayInPlace) {
    // Page 0 has its annotations in an array object of its own; page 1 a link among them;
    // page 2 none at all.
    RawPdf pdf;
    const int square = pdf.Add("<< /Type /Annot /Subtype /Square /Rect [10 10 20 20] >>");
    const int link = pdf.Add("<< /Type /Annot /Subtype /Link /Rect [0 0 5 5] /Dest [0 /Fit] >>");
    const int array = pdf.Add("[" + Ref(square) + "]");
    Document document = OpenRaw(pdf, {Ref(array), "[" + Ref(link) + "]", ""});
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
    Document saved = Document::Open(context_, Saved(document, "saved.pdf"));
    Annotations reread(saved);
    for (int page = 0; page < 3; ++page)
        EXPECT_EQ(reread.OnPage(page).size(), 3u - page) << page;
    // The file's array object may stand in other pages too: the page gets a copy of its own.
    annotations.Detach(0);
    EXPECT_EQ(AnnotsReference(document, 0), 0);
}

TEST_F(AnnotationsTest, ALongArrayInThePageBecomesAnObjectOfItsOwnInOrder) {
    // Put back into the page, a direct array is walked entry by entry; a reference is not.
    RawPdf pdf;
    std::vector<int> squares;
    std::string entries;
    for (int i = 0; i < 40; ++i) {
        squares.push_back(pdf.Add("<< /Type /Annot /Subtype /Square /Rect [10 10 20 20] >>"));
        entries += Ref(squares.back()) + " ";
    }
    Document document = OpenRaw(pdf, {"[" + entries + "]"});
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
    Annotations(document).Detach(0);
    EXPECT_EQ(AnnotsReference(document, 0), array) << "made for this page alone: not copied";
    Document saved = Document::Open(context_, Saved(document, "saved.pdf"));
    EXPECT_EQ(Annotations(saved).OnPage(0).size(), expected.size());
}

TEST_F(AnnotationsTest, RemoveAllTakesTheTargetsWithTheirPopupsAndKeepsTheRestInOrder) {
    RawPdf pdf;
    Document document = OpenRaw(pdf, {""});
    Annotations annotations(document);
    std::vector<AnnotationId> made;
    for (int i = 0; i < 6; ++i)
        made.push_back(Redact(document, 0));
    // A popup naming made[0] as its parent, one that made[2] names, and one of made[3].
    const int parented = Popup(annotations, "Parent", made[0].object);
    const int named = Popup(annotations, "P", made[4].object);
    const int kept_popup = Popup(annotations, "Parent", made[3].object);
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

TEST_F(AnnotationsTest, FoundFromAnOldPlaceAfterEntriesBeforeItWent) {
    RawPdf pdf;
    const int square = pdf.Add("<< /Type /Annot /Subtype /Square /Rect [10 10 20 20] >>");
    const int number = pdf.Add("7");
    // A number object, the square, the square again.
    Document document =
        OpenRaw(pdf, {"[" + Ref(number) + " " + Ref(square) + " " + Ref(square) + "]"});
    Annotations annotations(document);
    std::vector<AnnotationId> made;
    for (int i = 0; i < 40; ++i)
        made.push_back(Redact(document, 0));
    EXPECT_EQ(annotations.IndexOf({0, square}), 1);      // the first place without a hint
    EXPECT_EQ(annotations.IndexOf({0, square}, 2), 2);   // the hinted place when it holds it
    EXPECT_EQ(annotations.IndexOf({0, number}, 0), -1);  // no dictionary: no annotation
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(annotations.Remove(made[static_cast<std::size_t>(i)]).has_value());
    const struct {
        int made;  // which of the made annotations
        int hint;
        int expected;
    } cases[] = {
        {10, 13, 3},   // ten entries before it went
        {39, 42, 32},  // the last, hinted past the end now
        {25, 0, 18},   // hinted far below
        {20, 99, 13},  // a hint past the end: looked for from the last place
        {5, 8, -1},    // gone
    };
    for (const auto& c : cases) {
        EXPECT_EQ(annotations.IndexOf(made[static_cast<std::size_t>(c.made)], c.hint), c.expected)
            << c.made;
    }
}

TEST_F(AnnotationsTest, PagesSharingOneArrayTakeAPopupAlongWhicheverPageItCameThrough) {
    // Both pages name one /Annots object. Through page 1 a popup of the first square comes and
    // the last square goes: the array is as long as page 0 last saw it, with other entries.
    RawPdf pdf;
    std::string entries;
    std::vector<int> squares;
    for (int i = 0; i < 3; ++i) {
        squares.push_back(pdf.Add("<< /Type /Annot /Subtype /Square /Rect [10 10 20 20] >>"));
        entries += Ref(squares.back()) + " ";
    }
    const int array = pdf.Add("[" + entries + "]");
    Document document = OpenRaw(pdf, {Ref(array), Ref(array)});
    Annotations annotations(document);
    ASSERT_TRUE(annotations.Remove({0, squares[1]}).has_value());
    PdfValue popup = PdfValue::Dictionary();
    popup.Set("Subtype", PdfValue::Name("Popup"));
    popup.Set("Parent", PdfValue::Reference(squares[0], kDocumentTag));
    annotations.Create(1, popup, kDocumentTag, -1);
    ASSERT_TRUE(annotations.Remove({1, squares[2]}).has_value());

    EXPECT_EQ(annotations.Remove({0, squares[0]})->entries.size(), 2u);
    EXPECT_TRUE(annotations.OnPage(1).empty());
}

}  // namespace
}  // namespace pdfhost::engine
