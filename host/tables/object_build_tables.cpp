// PDF values a plug-in builds and hands to documents: new dictionaries and arrays, their
// entries, numbers of arrays, text encoded for PDF strings, and rectangle arithmetic. Setters
// and readers work on values being built and on objects of open documents alike; a change to
// a document's object marks the document modified.
#include <algorithm>
#include <cwchar>

#include "annotation_editor.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using engine::PdfValue;
using hostops::Op;

PdfValue* Built(HostApp& app, NdxObject handle) {
    return app.Values().pdfValues.Find(handle);
}

// The number of `object` when it is an indirect object of the document itself, else 0.
int ObjectNumberOf(fz_context* ctx, pdf_document* pdf, pdf_obj* object) {
    return engine::CallMupdf(ctx, "object number", [&] {
        const int number = pdf_obj_parent_num(ctx, object);
        if (number <= 0 || number >= pdf_xref_len(ctx, pdf))
            return 0;
        pdf_obj* ref = pdf_new_indirect(ctx, pdf, number, 0);
        const bool same = pdf_resolve_indirect(ctx, ref) == object;
        pdf_drop_obj(ctx, ref);
        return same ? number : 0;
    });
}

// The value a document object stands for: a reference to it when it has a number of its own,
// else a copy.
PdfValue ValueOfDocumentObject(HostDocument& document, pdf_obj* object) {
    fz_context* ctx = document.Engine().fz();
    const std::uintptr_t tag = AnnotationEditor::TagOf(document);
    if (const int number = ObjectNumberOf(ctx, document.Engine().pdf(), object))
        return PdfValue::Reference(number, tag);
    return engine::ValueOf(ctx, object, tag);
}

// Sets an entry of a dictionary being built or of a document's dictionary.
void PutEntry(HostApp& app, NdxObject dict, const char* key, const PdfValue& value) {
    if (key == nullptr)
        return;
    if (PdfValue* built = Built(app, dict)) {
        built->Set(key, value);
        return;
    }
    const auto found = app.Documents().FindObject(dict);
    HostDocument* const document = found.first;
    pdf_obj* const object = found.second;
    if (document == nullptr || document->IsClosing())
        return;
    fz_context* ctx = document->Engine().fz();
    pdf_document* pdf = document->Engine().pdf();
    if (!engine::CallMupdf(ctx, "entry", [&] { return pdf_is_dict(ctx, object); }))
        return;
    engine::ObjPtr made(ctx,
                        engine::NewPdfObject(ctx, pdf, AnnotationEditor::TagOf(*document), value));
    engine::CallMupdf(ctx, "cannot set a dictionary entry",
                      [&] { pdf_dict_puts(ctx, object, key, made ? made.get() : PDF_NULL); });
    app.MarkModified(*document);
}

NdxObject DictNew() {
    return Guarded<NdxObject>(nullptr, [](HostApp& app) {
        return app.Values().pdfValues.Add(std::make_unique<PdfValue>(PdfValue::Dictionary()));
    });
}

NdxObject ArrayNew() {
    return Guarded<NdxObject>(nullptr, [](HostApp& app) {
        return app.Values().pdfValues.Add(std::make_unique<PdfValue>(PdfValue::Array()));
    });
}

// Frees a value being built; objects of documents belong to their document.
void ObjectDestroy(NdxObject object) {
    Guarded([&](HostApp& app) { app.Values().pdfValues.Erase(object); });
}

int ArrayCount(NdxObject array) {
    return Guarded(0, [&](HostApp& app) -> int {
        if (const PdfValue* built = Built(app, array))
            return static_cast<int>(built->Items().size());
        const auto found = app.Documents().FindObject(array);
        HostDocument* const document = found.first;
        pdf_obj* const object = found.second;
        if (document == nullptr)
            return 0;
        fz_context* ctx = document->Engine().fz();
        return engine::CallMupdf(ctx, "array length", [&] { return pdf_array_len(ctx, object); });
    });
}

// 0 for an index outside the array or an entry that is no number.
float ArrayGetNumber(NdxObject array, int index) {
    return Guarded(0.0f, [&](HostApp& app) -> float {
        if (const PdfValue* built = Built(app, array)) {
            const auto& items = built->Items();
            return index >= 0 && static_cast<std::size_t>(index) < items.size()
                       ? items[static_cast<std::size_t>(index)].Number()
                       : 0.0f;
        }
        const auto found = app.Documents().FindObject(array);
        HostDocument* const document = found.first;
        pdf_obj* const object = found.second;
        if (document == nullptr)
            return 0.0f;
        fz_context* ctx = document->Engine().fz();
        return engine::CallMupdf(ctx, "array number",
                                 [&] { return pdf_array_get_real(ctx, object, index); });
    });
}

void ArrayAddNumber(NdxObject array, float value) {
    Guarded([&](HostApp& app) {
        if (PdfValue* built = Built(app, array)) {
            built->Push(PdfValue::Real(value));
            return;
        }
        const auto found = app.Documents().FindObject(array);
        HostDocument* const document = found.first;
        pdf_obj* const object = found.second;
        if (document == nullptr || document->IsClosing())
            return;
        fz_context* ctx = document->Engine().fz();
        const bool added = engine::CallMupdf(ctx, "cannot add to an array", [&] {
            if (!pdf_is_array(ctx, object))
                return false;
            pdf_array_push_real(ctx, object, value);
            return true;
        });
        if (added)
            app.MarkModified(*document);
    });
}

// The dictionary takes a value being built over (its handle is then gone); an object of a
// document goes in as a reference when it has a number of its own, else as a copy.
void DictSetObject(NdxObject dict, const char* key, NdxObject value, NdxDoc) {
    Guarded([&](HostApp& app) {
        if (value == dict)
            return;
        if (const PdfValue* built = Built(app, value)) {
            const PdfValue taken = *built;
            app.Values().pdfValues.Erase(value);
            PutEntry(app, dict, key, taken);
            return;
        }
        const auto [document, object] = app.Documents().FindObject(value);
        if (document != nullptr)
            PutEntry(app, dict, key, ValueOfDocumentObject(*document, object));
    });
}

void DictSetName(NdxObject dict, const char* key, const char* name) {
    Guarded([&](HostApp& app) {
        if (name != nullptr)
            PutEntry(app, dict, key, PdfValue::Name(name));
    });
}

void DictSetString(NdxObject dict, const char* key, HostByteString value) {
    Guarded([&](HostApp& app) {
        if (const ByteStringValue* bytes = FindBytes(app, value))
            PutEntry(app, dict, key, PdfValue::String(bytes->bytes));
    });
}

void DictSetInteger(NdxObject dict, const char* key, int value) {
    Guarded([&](HostApp& app) { PutEntry(app, dict, key, PdfValue::Integer(value)); });
}

// `target` must be a numbered object of document `doc`.
void DictSetReference(NdxObject dict, const char* key, NdxDoc doc, NdxObject target) {
    Guarded([&](HostApp& app) {
        HostDocument* document = app.Documents().FindByPdf(doc);
        const auto [owner, object] = app.Documents().FindObject(target);
        if (document == nullptr || owner != document)
            return;
        const int number =
            ObjectNumberOf(document->Engine().fz(), document->Engine().pdf(), object);
        if (number > 0)
            PutEntry(app, dict, key,
                     PdfValue::Reference(number, AnnotationEditor::TagOf(*document)));
    });
}

// Left, bottom, right, top.
void DictSetRect(NdxObject dict, const char* key, NdxRect rect) {
    Guarded([&](HostApp& app) {
        PdfValue array = PdfValue::Array();
        for (const float v : {rect.left, rect.bottom, rect.right, rect.top})
            array.Push(PdfValue::Real(v));
        PutEntry(app, dict, key, array);
    });
}

// The bytes of a PDF text string: PDFDocEncoding when every character has a code there, else
// UTF-16BE after its byte order mark. A negative length takes the text up to its terminator.
void TextToPdfString(const wchar_t* text, int length, int, HostByteString out) {
    Guarded([&](HostApp& app) {
        if (FindBytes(app, out) == nullptr)
            return;
        std::wstring_view wide = text != nullptr ? std::wstring_view(text) : std::wstring_view();
        if (length >= 0)
            wide = wide.substr(0, std::min(wide.size(), static_cast<std::size_t>(length)));
        const std::string utf8 = Utf8Of(wide);
        fz_context* ctx = app.Engine().get();
        engine::ObjPtr string(ctx, engine::CallMupdf(ctx, "cannot encode a text string", [&] {
                                  return pdf_new_text_string(ctx, utf8.c_str());
                              }));
        struct Bytes {
            const char* data;
            std::size_t size;
        };
        const Bytes bytes = engine::CallMupdf(ctx, "text string", [&] {
            return Bytes{pdf_to_str_buf(ctx, string.get()), pdf_to_str_len(ctx, string.get())};
        });
        SetBytes(app, out, std::string(bytes.data, bytes.size));
    });
}

// Moves each side outwards by its amount (negative amounts move it inwards).
void RectInflate(NdxRect* rect, float left, float bottom, float right, float top) {
    if (rect == nullptr)
        return;
    rect->left -= left;
    rect->bottom -= bottom;
    rect->right += right;
    rect->top += top;
}

}  // namespace

void RegisterObjectBuildTables(TableManager& tables) {
    tables.Register<Op::NDXDictNew>(&DictNew);
    tables.Register<Op::NDXArrayNew>(&ArrayNew);
    tables.Register<Op::NDXObjectDestroy>(&ObjectDestroy);
    tables.Register<Op::NDXArrayCount>(&ArrayCount);
    tables.Register<Op::NDXArrayGetNumber>(&ArrayGetNumber);
    tables.Register<Op::NDXArrayAddNumber>(&ArrayAddNumber);
    tables.Register<Op::NDXDictSetObject>(&DictSetObject);
    tables.Register<Op::NDXDictSetName>(&DictSetName);
    tables.Register<Op::NDXDictSetString>(&DictSetString);
    tables.Register<Op::NDXDictSetInteger>(&DictSetInteger);
    tables.Register<Op::NDXDictSetReference>(&DictSetReference);
    tables.Register<Op::NDXDictSetRect>(&DictSetRect);
    tables.Register<Op::HostTextToPdfString>(&TextToPdfString);
    tables.Register<Op::NDXRectInflate>(&RectInflate);
}

}  // namespace pdfhost
