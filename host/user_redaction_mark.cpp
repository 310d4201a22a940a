#include "user_redaction_mark.h"

#include <algorithm>

#include "annotation_editor.h"
#include "engine/error.h"
#include "engine/page_object_number.h"
#include "host_app.h"
#include "selection_rects.h"

namespace pdfhost {
namespace {

engine::PdfValue Numbers(std::initializer_list<float> values) {
    engine::PdfValue array = engine::PdfValue::Array();
    for (const float value : values)
        array.Push(engine::PdfValue::Real(value));
    return array;
}

engine::Rect Around(const std::vector<engine::Rect>& rects) {
    engine::Rect around = rects.front();
    for (const engine::Rect& r : rects) {
        around.left = std::min(around.left, r.left);
        around.bottom = std::min(around.bottom, r.bottom);
        around.right = std::max(around.right, r.right);
        around.top = std::max(around.top, r.top);
    }
    return around;
}

}  // namespace

engine::PdfValue UserRedactionEntries(const HostDocument& document, int page,
                                      const std::vector<engine::Rect>& quads) {
    using engine::PdfValue;
    const engine::Rect r = quads.empty() ? engine::Rect{} : Around(quads);
    PdfValue points = PdfValue::Array();
    for (const engine::Rect& q : quads) {
        for (const float value :
             {q.left, q.bottom, q.right, q.bottom, q.left, q.top, q.right, q.top})
            points.Push(PdfValue::Real(value));
    }
    PdfValue dict = PdfValue::Dictionary();
    dict.Set("Type", PdfValue::Name("Annot"));
    dict.Set("Subtype", PdfValue::Name("Redact"));
    dict.Set("Rect", Numbers({r.left, r.bottom, r.right, r.top}));
    dict.Set("QuadPoints", std::move(points));
    dict.Set("F", PdfValue::Integer(4));
    dict.Set("C", Numbers({1, 0, 0}));
    dict.Set("IC", Numbers({0, 0, 0}));
    dict.Set("P", PdfValue::Reference(engine::PageObjectNumber(document.Engine(), page),
                                      AnnotationEditor::TagOf(document)));
    return dict;
}

HostAnnot AddUserRedaction(HostApp& app, HostDocument& document, int page,
                           const std::vector<engine::Rect>& quads) {
    if (quads.empty())
        return nullptr;
    // The host tells plug-ins of the first change only; a mark of the user's is news to them
    // every time (the pane lists these marks).
    const bool wasModified = document.IsModified();
    HostAnnot annot = nullptr;
    try {
        annot = AnnotationEditor(app).Add(document, page,
                                          UserRedactionEntries(document, page, quads), -1);
    } catch (const engine::Error&) {
        return nullptr;  // a page the engine cannot read
    }
    if (annot == nullptr)
        return nullptr;
    app.Undo().Record(document.Handle(), annot, UndoStack::Change::kAdded);
    if (wasModified && !document.IsHidden())
        app.Events().Modified(document.Handle());
    return annot;
}

int RedactSelection(HostApp& app, HostDocument& document) {
    int added = 0;
    for (const auto& [page, rects] : SelectionRectsByPage(document))
        added += AddUserRedaction(app, document, page, rects) != nullptr ? 1 : 0;
    return added;
}

}  // namespace pdfhost
