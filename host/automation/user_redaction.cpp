#include "automation/user_redaction.h"

#include <algorithm>

#include "annotation_editor.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_object_number.h"
#include "host_app.h"

namespace pdfhost {
namespace {

engine::PdfValue Numbers(std::initializer_list<float> values) {
    engine::PdfValue array = engine::PdfValue::Array();
    for (const float value : values)
        array.Push(engine::PdfValue::Real(value));
    return array;
}

int PageObjectNumber(const HostDocument& document, int page) {
    return engine::PageObjectNumber(document.Engine(), page);
}

}  // namespace

engine::PdfValue UserRedactionEntries(const HostDocument& document, int page,
                                      const engine::Rect& r) {
    using engine::PdfValue;
    PdfValue dict = PdfValue::Dictionary();
    dict.Set("Type", PdfValue::Name("Annot"));
    dict.Set("Subtype", PdfValue::Name("Redact"));
    dict.Set("Rect", Numbers({r.left, r.bottom, r.right, r.top}));
    dict.Set("QuadPoints",
             Numbers({r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top}));
    dict.Set("F", PdfValue::Integer(4));
    dict.Set("C", Numbers({1, 0, 0}));
    dict.Set("IC", Numbers({0, 0, 0}));
    dict.Set("P", PdfValue::Reference(PageObjectNumber(document, page),
                                      AnnotationEditor::TagOf(document)));
    return dict;
}

std::string DrawUserRedaction(HostApp& app, HostDocument& document, const Json::Value& line) {
    const Json::Value& page = line["page"];
    const Json::Value& rect = line["rect"];
    if (!page.isInt() || page.asInt() < 0 || page.asInt() >= document.Engine().PageCount())
        return "\"userRedact\" needs a \"page\" of document " + std::to_string(document.Number());
    if (!rect.isArray() || rect.size() != 4 ||
        !std::all_of(rect.begin(), rect.end(),
                     [](const Json::Value& v) { return v.isNumeric(); })) {
        return "\"userRedact\" needs a \"rect\" of four numbers";
    }
    const engine::Rect area{std::min(rect[0].asFloat(), rect[2].asFloat()),
                            std::min(rect[1].asFloat(), rect[3].asFloat()),
                            std::max(rect[0].asFloat(), rect[2].asFloat()),
                            std::max(rect[1].asFloat(), rect[3].asFloat())};
    if (area.Width() <= 0 || area.Height() <= 0)
        return "\"userRedact\" needs a \"rect\" with an area";
    const int index = page.asInt();
    const HostAnnot annot =
        AnnotationEditor(app).Add(document, index, UserRedactionEntries(document, index, area), -1);
    if (annot == nullptr)
        return "document " + std::to_string(document.Number()) + " takes no annotation";
    app.Undo().Record(document.Handle(), annot, UndoStack::Change::kAdded);
    return {};
}

}  // namespace pdfhost
