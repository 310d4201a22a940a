// PDF objects handed out for a document, and the values plug-ins build: types, indirect
// references, dictionary entries and string bytes. Dictionary entries are handed out resolved,
// so that a value stored as an indirect object reads like one stored in place; strings are read
// as their raw bytes.
#include "engine/mupdf_call.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

struct Bytes {
    const char* data = nullptr;
    std::size_t size = 0;
};

// The bytes of a string object (through a reference); nothing for anything else.
std::string StringBytes(fz_context* ctx, pdf_obj* object) {
    const Bytes bytes = engine::CallMupdf(ctx, "string bytes", [&] {
        pdf_obj* direct = pdf_resolve_indirect_chain(ctx, object);
        if (!pdf_is_string(ctx, direct))
            return Bytes{};
        return Bytes{pdf_to_str_buf(ctx, direct), pdf_to_str_len(ctx, direct)};
    });
    return bytes.data != nullptr ? std::string(bytes.data, bytes.size) : std::string();
}

// The text of a dictionary entry read as a string: a string's bytes or a name's text.
std::string EntryText(fz_context* ctx, pdf_obj* entry) {
    const char* name = engine::CallMupdf(ctx, "name entry", [&]() -> const char* {
        pdf_obj* direct = pdf_resolve_indirect_chain(ctx, entry);
        return pdf_is_name(ctx, direct) ? pdf_to_name(ctx, direct) : nullptr;
    });
    return name != nullptr ? std::string(name) : StringBytes(ctx, entry);
}

// The type of a value a plug-in builds (NDXDictNew, NDXArrayNew).
int BuiltType(const engine::PdfValue& value) {
    using Kind = engine::PdfValue::Kind;
    switch (value.kind()) {
        case Kind::kBoolean:
            return kNdxObjectBoolean;
        case Kind::kInteger:
        case Kind::kReal:
            return kNdxObjectNumber;
        case Kind::kName:
            return kNdxObjectName;
        case Kind::kString:
            return kNdxObjectString;
        case Kind::kArray:
            return kNdxObjectArray;
        case Kind::kDictionary:
            return kNdxObjectDictionary;
        case Kind::kReference:
            return kNdxObjectReference;
        case Kind::kNull:
            break;
    }
    return kNdxObjectNull;
}

int ObjectGetType(NdxObject object) {
    return Guarded(0, [&](HostApp& app) {
        if (const engine::PdfValue* built = app.Values().pdfValues.Find(object))
            return BuiltType(*built);
        const auto found = app.Documents().FindObject(object);
        HostDocument* const document = found.first;
        pdf_obj* const value = found.second;
        if (value == nullptr)
            return 0;
        fz_context* ctx = document->Engine().fz();
        return engine::CallMupdf(ctx, "object type", [&]() -> int {
            if (pdf_is_indirect(ctx, value))
                return kNdxObjectReference;
            if (pdf_is_bool(ctx, value))
                return kNdxObjectBoolean;
            if (pdf_is_number(ctx, value))
                return kNdxObjectNumber;
            if (pdf_is_string(ctx, value))
                return kNdxObjectString;
            if (pdf_is_name(ctx, value))
                return kNdxObjectName;
            if (pdf_is_array(ctx, value))
                return kNdxObjectArray;
            if (pdf_is_dict(ctx, value))
                return kNdxObjectDictionary;
            return kNdxObjectNull;
        });
    });
}

NdxObject ObjectGetDirect(NdxObject object) {
    return Guarded<NdxObject>(nullptr, [&](HostApp& app) -> NdxObject {
        if (app.Values().pdfValues.Find(object) != nullptr)
            return object;
        const auto found = app.Documents().FindObject(object);
        HostDocument* const document = found.first;
        pdf_obj* const value = found.second;
        if (value == nullptr)
            return nullptr;
        fz_context* ctx = document->Engine().fz();
        pdf_obj* direct = engine::CallMupdf(ctx, "direct object",
                                            [&] { return pdf_resolve_indirect_chain(ctx, value); });
        return document->Objects().HandleOf(direct);
    });
}

void StringGetBytes(NdxObject string, HostByteString out) {
    Guarded([&](HostApp& app) {
        const auto [document, value] = app.Documents().FindObject(string);
        SetBytes(app, out,
                 value != nullptr ? StringBytes(document->Engine().fz(), value) : std::string());
    });
}

NdxObject DictGet(NdxObject dict, const char* key) {
    return Guarded<NdxObject>(nullptr, [&](HostApp& app) -> NdxObject {
        const auto found = app.Documents().FindObject(dict);
        HostDocument* const document = found.first;
        pdf_obj* const value = found.second;
        if (value == nullptr || key == nullptr)
            return nullptr;
        fz_context* ctx = document->Engine().fz();
        pdf_obj* entry = engine::CallMupdf(ctx, "dictionary entry", [&] {
            return pdf_resolve_indirect_chain(ctx, pdf_dict_gets(ctx, value, key));
        });
        return document->Objects().HandleOf(entry);
    });
}

// Empties `out` when the key is absent or holds no string.
void DictGetString(NdxObject dict, const char* key, HostByteString out) {
    Guarded([&](HostApp& app) {
        const auto found = app.Documents().FindObject(dict);
        HostDocument* const document = found.first;
        pdf_obj* const value = found.second;
        std::string bytes;
        if (const engine::PdfValue* built = app.Values().pdfValues.Find(dict)) {
            const engine::PdfValue* entry = key != nullptr ? built->Get(key) : nullptr;
            if (entry != nullptr && (entry->kind() == engine::PdfValue::Kind::kString ||
                                     entry->kind() == engine::PdfValue::Kind::kName))
                bytes = entry->Text();
        }
        if (value != nullptr && key != nullptr) {
            fz_context* ctx = document->Engine().fz();
            pdf_obj* entry = engine::CallMupdf(ctx, "dictionary entry",
                                               [&] { return pdf_dict_gets(ctx, value, key); });
            if (entry != nullptr)
                bytes = EntryText(ctx, entry);
        }
        SetBytes(app, out, std::move(bytes));
    });
}

}  // namespace

void RegisterObjectTables(TableManager& tables) {
    tables.Register<Op::NDXObjectGetType>(&ObjectGetType);
    tables.Register<Op::NDXObjectGetDirect>(&ObjectGetDirect);
    tables.Register<Op::NDXStringGetBytes>(&StringGetBytes);
    tables.Register<Op::NDXDictGet>(&DictGet);
    tables.Register<Op::NDXDictGetString>(&DictGetString);
}

}  // namespace pdfhost
