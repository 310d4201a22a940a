// PDF objects handed out for a document: types, indirect references, dictionary entries and
// string bytes. Dictionary entries are handed out resolved, so that a value stored as an indirect
// object reads like one stored in place; strings are read as their raw bytes.
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

int ObjectGetType(NdxObject object) {
    return Guarded(0, [&](HostApp& app) {
        const auto [document, value] = app.Documents().FindObject(object);
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
        const auto [document, value] = app.Documents().FindObject(object);
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
        const auto [document, value] = app.Documents().FindObject(dict);
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
        const auto [document, value] = app.Documents().FindObject(dict);
        std::string bytes;
        if (value != nullptr && key != nullptr) {
            fz_context* ctx = document->Engine().fz();
            pdf_obj* entry = engine::CallMupdf(ctx, "dictionary entry",
                                               [&] { return pdf_dict_gets(ctx, value, key); });
            if (entry != nullptr)
                bytes = StringBytes(ctx, entry);
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
