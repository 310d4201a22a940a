// Annotations: made from the dictionaries plug-ins fill, listed per page (through a page view
// or through a PDF page of NDXPageNew/NDXPageLoad, as in a document without a view), deleted,
// tested for being alive, and recorded for undo. HostAnnot and NdxAnnot handles of the same
// annotation are the same value.
#include "annotation_editor.h"
#include "engine/error.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using engine::PdfValue;
using hostops::Op;

struct PageOfDocument {
    HostDocument* document = nullptr;
    int page = -1;
};

PageOfDocument PageOfView(HostApp& app, HostPageView view) {
    const PageViewRecord* record = app.Pages().FindView(view);
    if (record == nullptr)
        return {};
    return {FindDocument(app, record->document), record->index};
}

PageOfDocument PageOfList(HostApp& app, NdxAnnotList list) {
    const AnnotationListRecord* record = app.Annotations().FindList(list);
    if (record == nullptr)
        return {};
    return {FindDocument(app, record->document), record->page};
}

// The annotation objects of the page, in order; none for an unknown page.
std::vector<int> AnnotationsOn(const PageOfDocument& at) {
    if (at.document == nullptr)
        return {};
    return engine::Annotations(at.document->Engine()).OnPage(at.page);
}

HostAnnot AnnotationAt(HostApp& app, const PageOfDocument& at, int index) {
    const std::vector<int> objects = AnnotationsOn(at);
    if (index < 0 || static_cast<std::size_t>(index) >= objects.size())
        return nullptr;
    return app.Annotations().HandleOf(at.document->Handle(),
                                      {at.page, objects[static_cast<std::size_t>(index)]});
}

HostDocument* DocumentOfAnnot(HostApp& app, HostAnnot annot) {
    const AnnotationRecord* record = app.Annotations().Find(annot);
    return record != nullptr && record->document != nullptr ? FindDocument(app, record->document)
                                                            : nullptr;
}

// The entries a dictionary handle holds: a value being built, or a document's dictionary.
std::optional<PdfValue> EntriesOf(HostApp& app, NdxObject dict, HostDocument** owner) {
    *owner = nullptr;
    if (const PdfValue* built = app.Values().pdfValues.Find(dict)) {
        if (built->kind() != PdfValue::Kind::kDictionary)
            return std::nullopt;
        return *built;
    }
    const auto [document, object] = app.Documents().FindObject(dict);
    if (document == nullptr)
        return std::nullopt;
    *owner = document;
    PdfValue value =
        engine::ValueOf(document->Engine().fz(), object, AnnotationEditor::TagOf(*document));
    if (value.kind() != PdfValue::Kind::kDictionary)
        return std::nullopt;
    return value;
}

// The open document that the entries' /P reference names, if any.
HostDoc DocumentNamedBy(HostApp& app, const PdfValue& entries) {
    const PdfValue* page = entries.Get("P");
    if (page == nullptr || page->kind() != PdfValue::Kind::kReference)
        return nullptr;
    const auto handle = reinterpret_cast<HostDoc>(page->ReferencedDocument());
    return FindDocument(app, handle) != nullptr ? handle : nullptr;
}

// ---- PDF annotations

NdxAnnot AnnotNew(NdxObject dict) {
    return Guarded<NdxAnnot>(nullptr, [&](HostApp& app) -> NdxAnnot {
        HostDocument* owner = nullptr;
        std::optional<PdfValue> entries = EntriesOf(app, dict, &owner);
        if (!entries)
            return nullptr;
        const HostDoc document =
            owner != nullptr ? owner->Handle() : DocumentNamedBy(app, *entries);
        return reinterpret_cast<NdxAnnot>(
            app.Annotations().NewPending(document, std::move(*entries)));
    });
}

NdxObject AnnotGetDict(NdxAnnot annot) {
    return Guarded<NdxObject>(nullptr, [&](HostApp& app) -> NdxObject {
        const AnnotationRecord* record = app.Annotations().Find(annot);
        HostDocument* document = DocumentOfAnnot(app, reinterpret_cast<HostAnnot>(annot));
        if (record == nullptr || record->IsPending() || document == nullptr)
            return nullptr;
        const engine::ObjPtr dict =
            engine::Annotations(document->Engine()).Dictionary(record->id.object);
        return document->Objects().HandleOf(dict.get());
    });
}

void AnnotGetSubtype(NdxAnnot annot, HostByteString out) {
    Guarded([&](HostApp& app) {
        const AnnotationRecord* record = app.Annotations().Find(annot);
        std::string subtype;
        if (record != nullptr && record->IsPending()) {
            if (const PdfValue* name = record->pending->Get("Subtype"))
                subtype = name->kind() == PdfValue::Kind::kName ? name->Text() : "";
        } else if (HostDocument* document =
                       DocumentOfAnnot(app, reinterpret_cast<HostAnnot>(annot))) {
            subtype = engine::Annotations(document->Engine()).Subtype(record->id.object);
        }
        SetBytes(app, out, subtype);
    });
}

NdxRect AnnotGetRect(NdxAnnot annot) {
    return Guarded(NdxRect{}, [&](HostApp& app) -> NdxRect {
        const AnnotationRecord* record = app.Annotations().Find(annot);
        if (record == nullptr)
            return {};
        if (record->IsPending()) {
            const PdfValue* rect = record->pending->Get("Rect");
            if (rect == nullptr || rect->Items().size() < 4)
                return {};
            const auto& v = rect->Items();
            return NdxRect{
                std::min(v[0].Number(), v[2].Number()), std::min(v[1].Number(), v[3].Number()),
                std::max(v[0].Number(), v[2].Number()), std::max(v[1].Number(), v[3].Number())};
        }
        HostDocument* document = DocumentOfAnnot(app, reinterpret_cast<HostAnnot>(annot));
        if (document == nullptr)
            return {};
        const engine::Rect r = engine::Annotations(document->Engine()).RectOf(record->id.object);
        return NdxRect{r.left, r.bottom, r.right, r.top};
    });
}

NdxAnnot HostAnnotGetPdfAnnot(HostAnnot annot) {
    return Guarded<NdxAnnot>(nullptr, [&](HostApp& app) -> NdxAnnot {
        return app.Annotations().Find(annot) != nullptr ? reinterpret_cast<NdxAnnot>(annot)
                                                        : nullptr;
    });
}

// ---- Annotation lists of PDF pages

NdxAnnotList AnnotListGet(NdxPage page) {
    return Guarded<NdxAnnotList>(nullptr, [&](HostApp& app) -> NdxAnnotList {
        const PdfPageRecord* record = app.Pages().FindPage(page);
        if (record == nullptr || record->document == nullptr ||
            FindDocument(app, record->document) == nullptr) {
            return nullptr;
        }
        return app.Annotations().ListOf(record->document, record->index);
    });
}

int AnnotListCount(NdxAnnotList list) {
    return Guarded(0, [&](HostApp& app) {
        return static_cast<int>(AnnotationsOn(PageOfList(app, list)).size());
    });
}

NdxAnnot AnnotListGetAt(NdxAnnotList list, int index) {
    return Guarded<NdxAnnot>(nullptr, [&](HostApp& app) {
        return reinterpret_cast<NdxAnnot>(AnnotationAt(app, PageOfList(app, list), index));
    });
}

// Puts a pending annotation (NDXAnnotNew) on the list's page at `index`; the count shows
// whether it went in.
void AnnotListInsert(NdxAnnotList list, int index, NdxAnnot annot) {
    Guarded([&](HostApp& app) {
        const PageOfDocument at = PageOfList(app, list);
        if (at.document != nullptr) {
            AnnotationEditor(app).Place(*at.document, reinterpret_cast<HostAnnot>(annot), at.page,
                                        index);
        }
    });
}

// ---- Annotations of page views

int PageViewCountAnnots(HostPageView view) {
    return Guarded(0, [&](HostApp& app) {
        return static_cast<int>(AnnotationsOn(PageOfView(app, view)).size());
    });
}

HostAnnot PageViewGetAnnot(HostPageView view, int index) {
    return Guarded<HostAnnot>(
        nullptr, [&](HostApp& app) { return AnnotationAt(app, PageOfView(app, view), index); });
}

// Takes the dictionary over: a value being built is gone afterwards, whatever the outcome.
HostAnnot PageViewAddAnnot(HostPageView view, NdxObject dict, int index) {
    return Guarded<HostAnnot>(nullptr, [&](HostApp& app) -> HostAnnot {
        HostDocument* owner = nullptr;
        const std::optional<PdfValue> entries = EntriesOf(app, dict, &owner);
        app.Values().pdfValues.Erase(dict);
        const PageOfDocument at = PageOfView(app, view);
        if (!entries || at.document == nullptr)
            return nullptr;
        return AnnotationEditor(app).Add(*at.document, at.page, *entries, index);
    });
}

int PageViewDeleteAnnot(HostPageView view, HostAnnot annot) {
    return Guarded(0, [&](HostApp& app) {
        const PageOfDocument at = PageOfView(app, view);
        const AnnotationRecord* record = app.Annotations().Find(annot);
        if (at.document == nullptr || record == nullptr || record->id.page != at.page)
            return 0;
        return AnnotationEditor(app).Delete(*at.document, annot) ? 1 : 0;
    });
}

void PageViewUpdateAnnot(HostPageView view, HostAnnot annot) {
    Guarded([&](HostApp& app) {
        const PageOfDocument at = PageOfView(app, view);
        if (at.document != nullptr)
            AnnotationEditor(app).Redraw(*at.document, annot);
    });
}

int PageViewOwnsAnnot(HostPageView view, HostAnnot annot) {
    return Guarded(0, [&](HostApp& app) {
        const PageOfDocument at = PageOfView(app, view);
        const AnnotationRecord* record = app.Annotations().Find(annot);
        if (at.document == nullptr || record == nullptr || record->id.page != at.page)
            return 0;
        return AnnotationEditor(app).IsAlive(*at.document, annot) ? 1 : 0;
    });
}

// The lists are read from the page each time; what is left is to show the page anew.
void PageReloadAnnots(HostPageView view) {
    Guarded([&](HostApp& app) {
        const PageOfDocument at = PageOfView(app, view);
        if (at.document != nullptr && at.document->View() != nullptr)
            at.document->View()->InvalidatePage(at.page);
    });
}

void DocRefreshPageAnnots(HostDoc doc, int pageIndex, int) {
    Guarded([&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        if (document != nullptr && document->View() != nullptr)
            document->View()->InvalidatePage(pageIndex);
    });
}

void DocTouchPage(HostDoc doc, int pageIndex) {
    Guarded([&](HostApp& app) {
        if (HostDocument* document = FindDocument(app, doc))
            AnnotationEditor(app).Touch(*document, pageIndex);
    });
}

int DocIsAnnotAlive(HostDoc doc, HostAnnot annot) {
    return Guarded(0, [&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        return document != nullptr && AnnotationEditor(app).IsAlive(*document, annot) ? 1 : 0;
    });
}

// ---- Undo

HostUndoManager UndoGetManager() {
    return Guarded<HostUndoManager>(nullptr, [](HostApp& app) { return app.Undo().Handle(); });
}

void Record(HostUndoManager manager, HostAnnot annot, UndoStack::Change change) {
    Guarded([&](HostApp& app) {
        const AnnotationRecord* record = app.Annotations().Find(annot);
        if (manager == app.Undo().Handle() && record != nullptr && !record->IsPending())
            app.Undo().Record(record->document, annot, change);
    });
}

void UndoRecordAddAnnot(HostUndoManager manager, HostAnnot annot, int, int) {
    Record(manager, annot, UndoStack::Change::kAdded);
}

void UndoRecordDeleteAnnot(HostUndoManager manager, HostAnnot annot, int) {
    Record(manager, annot, UndoStack::Change::kDeleted);
}

}  // namespace

void RegisterAnnotTables(TableManager& tables) {
    tables.Register<Op::NDXAnnotNew>(&AnnotNew);
    tables.Register<Op::NDXAnnotGetDict>(&AnnotGetDict);
    tables.Register<Op::NDXAnnotGetSubtype>(&AnnotGetSubtype);
    tables.Register<Op::NDXAnnotGetRect>(&AnnotGetRect);
    tables.Register<Op::NDXHostAnnotGetPdfAnnot>(&HostAnnotGetPdfAnnot);
    tables.Register<Op::NDXAnnotListGet>(&AnnotListGet);
    tables.Register<Op::NDXAnnotListCount>(&AnnotListCount);
    tables.Register<Op::NDXAnnotListGetAt>(&AnnotListGetAt);
    tables.Register<Op::NDXAnnotListInsert>(&AnnotListInsert);
    tables.Register<Op::HostPageViewCountAnnots>(&PageViewCountAnnots);
    tables.Register<Op::HostPageViewGetAnnot>(&PageViewGetAnnot);
    tables.Register<Op::HostPageViewAddAnnot>(&PageViewAddAnnot);
    tables.Register<Op::HostPageViewDeleteAnnot>(&PageViewDeleteAnnot);
    tables.Register<Op::HostPageViewUpdateAnnot>(&PageViewUpdateAnnot);
    tables.Register<Op::HostPageViewOwnsAnnot>(&PageViewOwnsAnnot);
    tables.Register<Op::HostPageReloadAnnots>(&PageReloadAnnots);
    tables.Register<Op::HostDocRefreshPageAnnots>(&DocRefreshPageAnnots);
    tables.Register<Op::HostDocTouchPage>(&DocTouchPage);
    tables.Register<Op::HostDocIsAnnotAlive>(&DocIsAnnotAlive);
    tables.Register<Op::HostUndoGetManager>(&UndoGetManager);
    tables.Register<Op::HostUndoRecordAddAnnot>(&UndoRecordAddAnnot);
    tables.Register<Op::HostUndoRecordDeleteAnnot>(&UndoRecordDeleteAnnot);
}

}  // namespace pdfhost
