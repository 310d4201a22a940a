// Annotations through the tables as the plug-in makes and reads them: the entries of the
// saved file, notes and popups, deletion, "alive" and "owns", undo, the path of a document
// without a view, and handles that outlive their document.
#include <gmock/gmock.h>

#include <set>

#include "annot_calls.h"
#include "annotation_editor.h"
#include "engine/permissions.h"

namespace pdfhost {
namespace {

using testing::AnnotationTablesTest;
using testing::CallHost;
using Op = hostops::Op;

// Entries of one object of a saved file, read with the engine.
class SavedEntries {
  public:
    SavedEntries(engine::Context& context, const std::string& path, int object)
        : document_(engine::Document::Open(context, path)),
          value_(engine::ValueOf(document_.fz(),
                                 engine::Annotations(document_).Dictionary(object).get(), 0)) {}
    const engine::PdfValue& Get(const char* key) const {
        static const engine::PdfValue missing;
        const engine::PdfValue* found = value_.Get(key);
        return found != nullptr ? *found : missing;
    }
    std::set<std::string> Keys() const {
        std::set<std::string> keys;
        for (const auto& [key, value] : value_.Entries())
            keys.insert(key);
        return keys;
    }
    std::vector<float> Numbers(const char* key) const {
        std::vector<float> values;
        for (const engine::PdfValue& item : Get(key).Items())
            values.push_back(item.Number());
        return values;
    }

  private:
    engine::Document document_;
    engine::PdfValue value_;
};

int ObjectOf(HostApp& app, HostAnnot annot) {
    return app.Annotations().Find(annot)->id.object;
}

TEST_F(AnnotationTablesTest, PlugInDictionaryStandsInTheSavedFileExactly) {
    HostDocument& document =
        Open({.pages = {engine::PageDescription::TextLines({"one secret", "two secret"})}});
    const auto first = engine::testing_support::WordRects(document.Engine(), 0, "secret");
    const std::vector<engine::Rect> rects = {
        first[0], engine::testing_support::WordRects(document.Engine(), 0, "two")[0]};
    const NdxObject dict = MatchDict(document, 0, "Highlight", rects, L"ai_plugin_1");
    const HostAnnot annot = AddThroughView(document, 0, dict);
    ASSERT_NE(annot, nullptr);
    EXPECT_EQ(CallHost<Op::NDXObjectGetType>(dict), 0) << "the view took the dictionary over";
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(Subtype(annot), "Highlight");
    const NdxRect rect =
        CallHost<Op::NDXAnnotGetRect>(CallHost<Op::NDXHostAnnotGetPdfAnnot>(annot));
    const engine::Rect all = engine::testing_support::Union(rects);
    EXPECT_EQ((std::vector<float>{rect.left, rect.bottom, rect.right, rect.top}),
              (std::vector<float>{all.left, all.bottom, all.right, all.top}));
    const int page_object = engine::testing_support::PageObjectNumber(document.Engine(), 0);

    const SavedEntries saved(app_.Engine(), Save(document), ObjectOf(app_, annot));
    EXPECT_EQ(saved.Keys(),
              (std::set<std::string>{"AP", "C", "Contents", "F", "NM", "P", "QuadPoints", "Rect",
                                     "Subj", "Subtype", "Type"}))
        << "the plug-in's entries and the appearance, nothing the editor would add";
    EXPECT_EQ(saved.Get("Type").Text(), "Annot");
    EXPECT_EQ(saved.Numbers("Rect"),
              (std::vector<float>{all.left, all.bottom, all.right, all.top}));
    EXPECT_EQ(saved.Get("F").Integer(), 4);
    std::vector<float> quads;
    for (const engine::Rect& r : rects)
        quads.insert(quads.end(),
                     {r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top});
    EXPECT_EQ(saved.Numbers("QuadPoints"), quads);
    EXPECT_EQ(saved.Get("Subj").Text(), "Highlight");
    EXPECT_EQ(saved.Numbers("C"), (std::vector<float>{1, 1, 0}));
    EXPECT_EQ(saved.Get("Contents").Text(), "a comment");
    EXPECT_EQ(saved.Get("NM").Text(), "ai_plugin_1");
    EXPECT_EQ(saved.Get("P").ReferencedObject(), page_object);
    EXPECT_EQ(saved.Get("AP").kind(), engine::PdfValue::Kind::kDictionary);
}

TEST_F(AnnotationTablesTest, NoteAndItsPopupAsThePointNotesMakeThem) {
    HostDocument& document = Open({.pages = {engine::PageDescription::Blank()}});
    const NdxDoc pdf = document.PdfHandle();
    const NdxObject note = CallHost<Op::NDXDictNew>();
    CallHost<Op::NDXDictSetName>(note, "Type", "Annot");
    CallHost<Op::NDXDictSetName>(note, "Subtype", "Text");
    CallHost<Op::NDXDictSetName>(note, "Name", "Note");
    CallHost<Op::NDXDictSetRect>(note, "Rect", NdxRect{10, 770, 30, 790});
    CallHost<Op::NDXDictSetInteger>(note, "F", 4);
    CallHost<Op::NDXDictSetObject>(note, "C", Numbers({1, 1, 0}), pdf);
    CallHost<Op::NDXDictSetReference>(note, "P", pdf, CallHost<Op::NDXDocGetPage>(pdf, 0));
    SetText(note, "Contents", L"caf\u00e9 \u4e2d");
    SetText(note, "NM", L"ai_plugin_pt_1");
    const HostDoc doc = document.Handle();
    CallHost<Op::HostDocTouchPage>(doc, 0);
    const HostPageView view = CallHost<Op::HostDocGetPageView>(doc, 0);
    const HostAnnot made = CallHost<Op::HostPageViewAddAnnot>(view, note, -1);
    ASSERT_NE(made, nullptr);

    const NdxObject popup = CallHost<Op::NDXDictNew>();
    CallHost<Op::NDXDictSetRect>(popup, "Rect", NdxRect{432, 650, 612, 770});
    CallHost<Op::NDXDictSetName>(popup, "Type", "Annot");
    CallHost<Op::NDXDictSetName>(popup, "Subtype", "Popup");
    const NdxObject note_dict =
        CallHost<Op::NDXAnnotGetDict>(CallHost<Op::NDXHostAnnotGetPdfAnnot>(made));
    CallHost<Op::NDXDictSetReference>(popup, "P", pdf, note_dict);
    const HostAnnot popup_made = CallHost<Op::HostPageViewAddAnnot>(view, popup, -1);
    ASSERT_NE(popup_made, nullptr);
    ASSERT_EQ(CallHost<Op::HostPageViewCountAnnots>(view), 2);
    EXPECT_EQ(CallHost<Op::HostPageViewGetAnnot>(view, 0), made) << "one handle per annotation";
    EXPECT_EQ(CallHost<Op::HostPageViewGetAnnot>(view, 2), nullptr);

    // The point-note walk reads the note's entries back through its dictionary.
    const NdxObject contents = CallHost<Op::NDXDictGet>(note_dict, "Contents");
    EXPECT_EQ(CallHost<Op::NDXObjectGetType>(contents), kNdxObjectString);
    const HostByteString bytes = CallHost<Op::HostByteStringNew>();
    CallHost<Op::NDXStringGetBytes>(contents, bytes);
    EXPECT_EQ(testing::ByteText(bytes), std::string("\xFE\xFF\x00"
                                                    "c\x00"
                                                    "a\x00"
                                                    "f\x00\xE9\x00 \x4E\x2D",
                                                    14))
        << "a text that PDFDocEncoding cannot hold is UTF-16BE";
    CallHost<Op::HostByteStringDelete>(bytes);

    const std::string path = Save(document);
    const SavedEntries saved_note(app_.Engine(), path, ObjectOf(app_, made));
    EXPECT_EQ(saved_note.Numbers("Rect"), (std::vector<float>{10, 770, 30, 790}));
    EXPECT_EQ(saved_note.Get("Name").Text(), "Note");
    EXPECT_EQ(saved_note.Get("Popup").kind(), engine::PdfValue::Kind::kNull);
    const SavedEntries saved_popup(app_.Engine(), path, ObjectOf(app_, popup_made));
    EXPECT_EQ(saved_popup.Get("P").ReferencedObject(), ObjectOf(app_, made));
    EXPECT_EQ(saved_popup.Numbers("Rect"), (std::vector<float>{432, 650, 612, 770}));
}

TEST_F(AnnotationTablesTest, DeleteAliveOwnsAndHandlesThatOutliveTheirDocument) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"one word"}),
                                             engine::PageDescription::TextLines({"two words"})}});
    const HostDoc doc = document.Handle();
    const HostAnnot annot = RedactWord(document, 0, "word");
    const HostPageView first = CallHost<Op::HostDocGetPageView>(doc, 0);
    const HostPageView second = CallHost<Op::HostDocGetPageView>(doc, 1);
    EXPECT_EQ(CallHost<Op::HostDocIsAnnotAlive>(doc, annot), 1);
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(first, annot), 1);
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(second, annot), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewDeleteAnnot>(second, annot), 0) << "not on that page";

    EXPECT_EQ(CallHost<Op::HostPageViewDeleteAnnot>(first, annot), 1);
    EXPECT_EQ(CallHost<Op::HostDocIsAnnotAlive>(doc, annot), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(first, annot), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewDeleteAnnot>(first, annot), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewCountAnnots>(first), 0);
    EXPECT_EQ(Subtype(annot), "Redact") << "a deleted annotation can still be read";

    const HostAnnot kept = RedactWord(document, 1, "words");
    const NdxAnnot pdf_annot = CallHost<Op::NDXHostAnnotGetPdfAnnot>(kept);
    app_.CloseDocument(document);
    EXPECT_EQ(CallHost<Op::HostDocIsAnnotAlive>(doc, kept), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewOwnsAnnot>(second, kept), 0);
    EXPECT_EQ(CallHost<Op::HostPageViewCountAnnots>(second), 0);
    EXPECT_EQ(CallHost<Op::NDXHostAnnotGetPdfAnnot>(kept), nullptr);
    EXPECT_EQ(CallHost<Op::NDXAnnotGetDict>(pdf_annot), nullptr);
    const NdxRect rect = CallHost<Op::NDXAnnotGetRect>(pdf_annot);
    EXPECT_EQ(rect.right - rect.left, 0.0f);
    EXPECT_EQ(CallHost<Op::HostPageViewAddAnnot>(second, CallHost<Op::NDXDictNew>(), -1), nullptr);
}

TEST_F(AnnotationTablesTest, UndoTakesBackAdditionsAndDeletionsNewestFirst) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"alpha beta"})}});
    const HostDoc doc = document.Handle();
    const HostPageView view = CallHost<Op::HostDocGetPageView>(doc, 0);
    const HostAnnot alpha = RedactWord(document, 0, "alpha");
    const HostAnnot beta = RedactWord(document, 0, "beta");
    CallHost<Op::HostUndoRecordDeleteAnnot>(CallHost<Op::HostUndoGetManager>(), alpha, 1);
    ASSERT_EQ(CallHost<Op::HostPageViewDeleteAnnot>(view, alpha), 1);

    AnnotationEditor editor(app_);
    EXPECT_TRUE(editor.UndoLast(document)) << "the deletion";
    EXPECT_EQ(CallHost<Op::HostPageViewGetAnnot>(view, 0), alpha) << "back in its place";
    EXPECT_TRUE(editor.UndoLast(document)) << "the addition of beta";
    EXPECT_EQ(CallHost<Op::HostDocIsAnnotAlive>(doc, beta), 0);
    EXPECT_TRUE(editor.UndoLast(document)) << "the addition of alpha";
    EXPECT_EQ(CallHost<Op::HostPageViewCountAnnots>(view), 0);
    EXPECT_FALSE(editor.UndoLast(document));

    // A recording with a stale manager or handle is ignored.
    CallHost<Op::HostUndoRecordAddAnnot>(reinterpret_cast<HostUndoManager>(0x1), alpha, 1, 1);
    CallHost<Op::HostUndoRecordAddAnnot>(CallHost<Op::HostUndoGetManager>(), nullptr, 1, 1);
    EXPECT_EQ(app_.Undo().Count(doc), 0u);
}

// A deletion the full history let go of can no longer be undone: the annotation's objects
// leave the document, so that a long session does not keep every annotation it removed.
TEST_F(AnnotationTablesTest, DeletionsPastTheHistoryLeaveTheDocument) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"alpha beta"})}});
    const HostPageView view = CallHost<Op::HostDocGetPageView>(document.Handle(), 0);
    const HostAnnot alpha = RedactWord(document, 0, "alpha");
    const int object = app_.Annotations().Find(alpha)->id.object;
    const HostUndoManager undo = CallHost<Op::HostUndoGetManager>();
    CallHost<Op::HostUndoRecordDeleteAnnot>(undo, alpha, 1);
    ASSERT_EQ(CallHost<Op::HostPageViewDeleteAnnot>(view, alpha), 1);
    const auto exists = [&] {
        const pdf_xref_entry* entry =
            pdf_get_xref_entry(document.Engine().fz(), document.Engine().pdf(), object);
        return entry != nullptr && entry->type != 0 && entry->type != 'f';
    };
    ASSERT_TRUE(exists()) << "kept while the deletion can be undone";
    for (int i = 0; i < 1000; ++i)
        CallHost<Op::HostUndoRecordAddAnnot>(undo, RedactWord(document, 0, "beta"), 1, 1);
    EXPECT_FALSE(exists());
    EXPECT_EQ(app_.Annotations().Find(alpha), nullptr) << "its handle is stale";
    EXPECT_FALSE(AnnotationEditor(app_).UndoLast(document) &&
                 CallHost<Op::HostDocIsAnnotAlive>(document.Handle(), alpha) != 0);
}

TEST_F(AnnotationTablesTest, DocumentWithoutViewTakesAnnotationsThroughPageLists) {
    HostDocument& document =
        Open({.pages = {engine::PageDescription::TextLines({"batch secret"})}}, false);
    const HostDoc doc = document.Handle();
    const NdxDoc pdf = document.PdfHandle();
    EXPECT_EQ(CallHost<Op::HostDocGetView>(doc), nullptr);
    EXPECT_EQ(CallHost<Op::HostDocGetTextSelectTool>(doc), nullptr);

    const NdxPage page = CallHost<Op::NDXPageNew>();
    CallHost<Op::NDXPageLoad>(page, pdf, CallHost<Op::NDXDocGetPage>(pdf, 0), 0);
    CallHost<Op::NDXPageParse>(page, nullptr);
    ASSERT_EQ(CallHost<Op::NDXPageIsParsed>(page), 1);
    const NdxAnnotList list = CallHost<Op::NDXAnnotListGet>(page);
    ASSERT_NE(list, nullptr);
    const auto rects = engine::testing_support::WordRects(document.Engine(), 0, "secret");
    const NdxObject dict = MatchDict(document, 0, "Redact", rects, L"ai_plugin_b");
    const NdxAnnot annot = CallHost<Op::NDXAnnotNew>(dict);
    ASSERT_NE(annot, nullptr);
    const HostByteString subtype = CallHost<Op::HostByteStringNew>();
    CallHost<Op::NDXAnnotGetSubtype>(annot, subtype);
    EXPECT_EQ(testing::ByteText(subtype), "Redact") << "a pending annotation reads its entries";
    CallHost<Op::HostByteStringDelete>(subtype);

    const int count = CallHost<Op::NDXAnnotListCount>(list);
    CallHost<Op::NDXAnnotListInsert>(list, count, annot);
    EXPECT_EQ(CallHost<Op::NDXAnnotListCount>(list), count + 1);
    EXPECT_EQ(CallHost<Op::NDXAnnotListGetAt>(list, count), annot);
    CallHost<Op::NDXAnnotListInsert>(list, count, annot);
    EXPECT_EQ(CallHost<Op::NDXAnnotListCount>(list), count + 1) << "inserted once";
    CallHost<Op::HostPageReloadAnnots>(CallHost<Op::HostDocGetPageView>(doc, 0));
    CallHost<Op::HostDocRefreshPageAnnots>(doc, 0, 0);
    CallHost<Op::NDXObjectDestroy>(dict);
    CallHost<Op::NDXPageDestroy>(page);
    EXPECT_EQ(CallHost<Op::HostDocIsAnnotAlive>(doc, reinterpret_cast<HostAnnot>(annot)), 1);
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.Engine().PageCount(), 1);
}

TEST_F(AnnotationTablesTest, DocumentThatForbidsAnnotatingStaysUnchanged) {
    engine::PdfDescription layout{.pages = {engine::PageDescription::TextLines({"locked"})}};
    layout.encryption = engine::Encryption{
        .user_password = "", .owner_password = "owner", .permissions = engine::permission::kPrint};
    HostDocument& document = Open(layout);
    const auto rects = engine::testing_support::WordRects(document.Engine(), 0, "locked");
    EXPECT_EQ(AddThroughView(document, 0, MatchDict(document, 0, "Redact", rects, L"x")), nullptr);
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(CallHost<Op::HostPageViewCountAnnots>(
                  CallHost<Op::HostDocGetPageView>(document.Handle(), 0)),
              0);
}

}  // namespace
}  // namespace pdfhost
