// Annotations through the tables as the plug-in makes and reads them: the entries of the
// saved file, notes and popups, deletion, "alive" and "owns", undo, the path of a document
// without a view, and handles that outlive their document.

#include <set>

#include "annot_calls.h"
#include "annotation_editor.h"
#include "engine/permissions.h"

namespace pdfhost::testing {
namespace {

int ObjectOf(HostApp& app, HostAnnot annot) {
    return app.Annotations().Find(annot)->id.object;
}
// The entries of `annot` in the file saved at `path`, read with the engine.
engine::PdfValue SavedEntries(HostApp& app, const std::string& path, HostAnnot annot) {
    engine::Document document = engine::Document::Open(app.Engine(), path);
    return engine::ValueOf(document.fz(),
                           engine::Annotations(document).Dictionary(ObjectOf(app, annot)).get(), 0);
}
const engine::PdfValue& SavedEntry(const engine::PdfValue& value, const char* key) {
    static const engine::PdfValue missing;
    const engine::PdfValue* found = value.Get(key);
    return found != nullptr ? *found : missing;
}
std::vector<float> SavedNumbers(const engine::PdfValue& value, const char* key) {
    std::vector<float> numbers;
    for (const engine::PdfValue& item : SavedEntry(value, key).Items())
        numbers.push_back(item.Number());
    return numbers;
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
    EXPECT_EQ(Call<NDXObjectGetType>(dict), 0) << "the view took the dictionary over";
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(Subtype(annot), "Highlight");
    const engine::Rect all = Union(rects);
    const std::vector<float> corners{all.left, all.bottom, all.right, all.top};
    EXPECT_EQ(Corners(Call<NDXAnnotGetRect>(Call<NDXHostAnnotGetPdfAnnot>(annot))), corners);
    const int page_object = engine::PageObjectNumber(document.Engine(), 0);

    const engine::PdfValue saved = SavedEntries(app_, Save(document), annot);
    std::set<std::string> keys;
    for (const auto& [key, entry] : saved.Entries())
        keys.insert(key);
    EXPECT_EQ(keys, (std::set<std::string>{"AP", "C", "Contents", "F", "NM", "P", "QuadPoints",
                                           "Rect", "Subj", "Subtype", "Type"}))
        << "the plug-in's entries and the appearance, nothing the editor would add";
    EXPECT_EQ(SavedEntry(saved, "Type").Text(), "Annot");
    EXPECT_EQ(SavedNumbers(saved, "Rect"), corners);
    EXPECT_EQ(SavedEntry(saved, "F").Integer(), 4);
    EXPECT_EQ(SavedNumbers(saved, "QuadPoints"), Quads(rects));
    EXPECT_EQ(SavedEntry(saved, "Subj").Text(), "Highlight");
    EXPECT_EQ(SavedNumbers(saved, "C"), (std::vector<float>{1, 1, 0}));
    EXPECT_EQ(SavedEntry(saved, "Contents").Text(), "a comment");
    EXPECT_EQ(SavedEntry(saved, "NM").Text(), "ai_plugin_1");
    EXPECT_EQ(SavedEntry(saved, "P").ReferencedObject(), page_object);
    EXPECT_EQ(SavedEntry(saved, "AP").kind(), engine::PdfValue::Kind::kDictionary);
}

TEST_F(AnnotationTablesTest, NoteAndItsPopupAsThePointNotesMakeThem) {
    HostDocument& document = Open({.pages = {engine::PageDescription::Blank()}});
    const NdxDoc pdf = document.PdfHandle();
    const NdxObject note = Call<NDXDictNew>();
    Call<NDXDictSetName>(note, "Type", "Annot");
    Call<NDXDictSetName>(note, "Subtype", "Text");
    Call<NDXDictSetName>(note, "Name", "Note");
    Call<NDXDictSetRect>(note, "Rect", NdxRect{10, 770, 30, 790});
    Call<NDXDictSetInteger>(note, "F", 4);
    Call<NDXDictSetObject>(note, "C", Numbers({1, 1, 0}), pdf);
    Call<NDXDictSetReference>(note, "P", pdf, Call<NDXDocGetPage>(pdf, 0));
    SetText(note, "Contents", L"caf\u00e9 \u4e2d");
    SetText(note, "NM", L"ai_plugin_pt_1");
    const HostDoc doc = document.Handle();
    Call<HostDocTouchPage>(doc, 0);
    const HostPageView view = Call<HostDocGetPageView>(doc, 0);
    const HostAnnot made = Call<HostPageViewAddAnnot>(view, note, -1);
    ASSERT_NE(made, nullptr);

    const NdxObject popup = Call<NDXDictNew>();
    Call<NDXDictSetRect>(popup, "Rect", NdxRect{432, 650, 612, 770});
    Call<NDXDictSetName>(popup, "Type", "Annot");
    Call<NDXDictSetName>(popup, "Subtype", "Popup");
    const NdxObject note_dict = Call<NDXAnnotGetDict>(Call<NDXHostAnnotGetPdfAnnot>(made));
    Call<NDXDictSetReference>(popup, "P", pdf, note_dict);
    const HostAnnot popup_made = Call<HostPageViewAddAnnot>(view, popup, -1);
    ASSERT_NE(popup_made, nullptr);
    ASSERT_EQ(Call<HostPageViewCountAnnots>(view), 2);
    EXPECT_EQ(Call<HostPageViewGetAnnot>(view, 0), made) << "one handle per annotation";
    EXPECT_EQ(Call<HostPageViewGetAnnot>(view, 2), nullptr);

    // The point-note walk reads the note's entries back through its dictionary.
    const NdxObject contents = Call<NDXDictGet>(note_dict, "Contents");
    EXPECT_EQ(Call<NDXObjectGetType>(contents), kNdxObjectString);
    EXPECT_EQ(ReadBytes([&](HostByteString s) { Call<NDXStringGetBytes>(contents, s); }),
              std::string("\xFE\xFF\x00"
                          "c\x00"
                          "a\x00"
                          "f\x00\xE9\x00 \x4E\x2D",
                          14))
        << "a text that PDFDocEncoding cannot hold is UTF-16BE";

    const std::string path = Save(document);
    const engine::PdfValue saved_note = SavedEntries(app_, path, made);
    EXPECT_EQ(SavedNumbers(saved_note, "Rect"), (std::vector<float>{10, 770, 30, 790}));
    EXPECT_EQ(SavedEntry(saved_note, "Name").Text(), "Note");
    EXPECT_EQ(SavedEntry(saved_note, "Popup").kind(), engine::PdfValue::Kind::kNull);
    const engine::PdfValue saved_popup = SavedEntries(app_, path, popup_made);
    EXPECT_EQ(SavedEntry(saved_popup, "P").ReferencedObject(), ObjectOf(app_, made));
    EXPECT_EQ(SavedNumbers(saved_popup, "Rect"), (std::vector<float>{432, 650, 612, 770}));
}

TEST_F(AnnotationTablesTest, DeleteAliveOwnsAndHandlesThatOutliveTheirDocument) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"one word"}),
                                             engine::PageDescription::TextLines({"two words"})}});
    const HostDoc doc = document.Handle();
    const HostAnnot annot = RedactWord(document, 0, "word");
    const HostPageView first = Call<HostDocGetPageView>(doc, 0);
    const HostPageView second = Call<HostDocGetPageView>(doc, 1);
    EXPECT_EQ(Call<HostDocIsAnnotAlive>(doc, annot), 1);
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(first, annot), 1);
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(second, annot), 0);
    EXPECT_EQ(Call<HostPageViewDeleteAnnot>(second, annot), 0) << "not on that page";

    EXPECT_EQ(Call<HostPageViewDeleteAnnot>(first, annot), 1);
    EXPECT_EQ(Call<HostDocIsAnnotAlive>(doc, annot), 0);
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(first, annot), 0);
    EXPECT_EQ(Call<HostPageViewDeleteAnnot>(first, annot), 0);
    EXPECT_EQ(Call<HostPageViewCountAnnots>(first), 0);
    EXPECT_EQ(Subtype(annot), "Redact") << "a deleted annotation can still be read";

    const HostAnnot kept = RedactWord(document, 1, "words");
    const NdxAnnot pdf_annot = Call<NDXHostAnnotGetPdfAnnot>(kept);
    app_.CloseDocument(document);
    EXPECT_EQ(Call<HostDocIsAnnotAlive>(doc, kept), 0);
    EXPECT_EQ(Call<HostPageViewOwnsAnnot>(second, kept), 0);
    EXPECT_EQ(Call<HostPageViewCountAnnots>(second), 0);
    EXPECT_EQ(Call<NDXHostAnnotGetPdfAnnot>(kept), nullptr);
    EXPECT_EQ(Call<NDXAnnotGetDict>(pdf_annot), nullptr);
    const NdxRect rect = Call<NDXAnnotGetRect>(pdf_annot);
    EXPECT_EQ(rect.right - rect.left, 0.0f);
    EXPECT_EQ(Call<HostPageViewAddAnnot>(second, Call<NDXDictNew>(), -1), nullptr);
}

TEST_F(AnnotationTablesTest, UndoTakesBackAdditionsAndDeletionsNewestFirst) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"alpha beta"})}});
    const HostDoc doc = document.Handle();
    const HostPageView view = Call<HostDocGetPageView>(doc, 0);
    const HostAnnot alpha = RedactWord(document, 0, "alpha");
    const HostAnnot beta = RedactWord(document, 0, "beta");
    Call<HostUndoRecordDeleteAnnot>(Call<HostUndoGetManager>(), alpha, 1);
    ASSERT_EQ(Call<HostPageViewDeleteAnnot>(view, alpha), 1);

    AnnotationEditor editor(app_);
    EXPECT_TRUE(editor.UndoLast(document)) << "the deletion";
    EXPECT_EQ(Call<HostPageViewGetAnnot>(view, 0), alpha) << "back in its place";
    EXPECT_TRUE(editor.UndoLast(document)) << "the addition of beta";
    EXPECT_EQ(Call<HostDocIsAnnotAlive>(doc, beta), 0);
    EXPECT_TRUE(editor.UndoLast(document)) << "the addition of alpha";
    EXPECT_EQ(Call<HostPageViewCountAnnots>(view), 0);
    EXPECT_FALSE(editor.UndoLast(document));

    // A recording with a stale manager or handle is ignored.
    Call<HostUndoRecordAddAnnot>(reinterpret_cast<HostUndoManager>(0x1), alpha, 1, 1);
    Call<HostUndoRecordAddAnnot>(Call<HostUndoGetManager>(), nullptr, 1, 1);
    EXPECT_EQ(app_.Undo().Count(doc), 0u);
}

// A deletion the full history let go of can no longer be undone: the annotation's objects
// leave the document, so that a long session does not keep every annotation it removed.
TEST_F(AnnotationTablesTest, DeletionsPastTheHistoryLeaveTheDocument) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"alpha beta"})}});
    const HostPageView view = Call<HostDocGetPageView>(document.Handle(), 0);
    const HostAnnot alpha = RedactWord(document, 0, "alpha");
    const int object = app_.Annotations().Find(alpha)->id.object;
    const HostUndoManager undo = Call<HostUndoGetManager>();
    Call<HostUndoRecordDeleteAnnot>(undo, alpha, 1);
    ASSERT_EQ(Call<HostPageViewDeleteAnnot>(view, alpha), 1);
    const auto exists = [&] {
        const pdf_xref_entry* entry =
            pdf_get_xref_entry(document.Engine().fz(), document.Engine().pdf(), object);
        return entry != nullptr && entry->type != 0 && entry->type != 'f';
    };
    ASSERT_TRUE(exists()) << "kept while the deletion can be undone";
    for (int i = 0; i < 1000; ++i)
        Call<HostUndoRecordAddAnnot>(undo, RedactWord(document, 0, "beta"), 1, 1);
    EXPECT_FALSE(exists());
    EXPECT_EQ(app_.Annotations().Find(alpha), nullptr) << "its handle is stale";
    EXPECT_FALSE(AnnotationEditor(app_).UndoLast(document) &&
                 Call<HostDocIsAnnotAlive>(document.Handle(), alpha) != 0);
}

TEST_F(AnnotationTablesTest, DocumentWithoutViewTakesAnnotationsThroughPageLists) {
    HostDocument& document =
        Open({.pages = {engine::PageDescription::TextLines({"batch secret"})}}, false);
    const HostDoc doc = document.Handle();
    const NdxDoc pdf = document.PdfHandle();
    EXPECT_EQ(Call<HostDocGetView>(doc), nullptr);
    EXPECT_EQ(Call<HostDocGetTextSelectTool>(doc), nullptr);

    const NdxPage page = LoadPage(pdf, 0);
    ASSERT_EQ(Call<NDXPageIsParsed>(page), 1);
    const NdxAnnotList list = Call<NDXAnnotListGet>(page);
    ASSERT_NE(list, nullptr);
    const auto rects = engine::testing_support::WordRects(document.Engine(), 0, "secret");
    const NdxObject dict = MatchDict(document, 0, "Redact", rects, L"ai_plugin_b");
    const NdxAnnot annot = Call<NDXAnnotNew>(dict);
    ASSERT_NE(annot, nullptr);
    EXPECT_EQ(ReadBytes([&](HostByteString s) { Call<NDXAnnotGetSubtype>(annot, s); }), "Redact")
        << "a pending annotation reads its entries";

    const int count = Call<NDXAnnotListCount>(list);
    Call<NDXAnnotListInsert>(list, count, annot);
    EXPECT_EQ(Call<NDXAnnotListCount>(list), count + 1);
    EXPECT_EQ(Call<NDXAnnotListGetAt>(list, count), annot);
    Call<NDXAnnotListInsert>(list, count, annot);
    EXPECT_EQ(Call<NDXAnnotListCount>(list), count + 1) << "inserted once";
    Call<HostPageReloadAnnots>(Call<HostDocGetPageView>(doc, 0));
    Call<HostDocRefreshPageAnnots>(doc, 0, 0);
    Call<NDXObjectDestroy>(dict);
    Call<NDXPageDestroy>(page);
    EXPECT_EQ(Call<HostDocIsAnnotAlive>(doc, reinterpret_cast<HostAnnot>(annot)), 1);
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
    EXPECT_EQ(Call<HostPageViewCountAnnots>(Call<HostDocGetPageView>(document.Handle(), 0)), 0);
}

}  // namespace
}  // namespace pdfhost::testing
