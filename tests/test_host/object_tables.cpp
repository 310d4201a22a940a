// PDF objects (dictionaries, arrays, strings, names, numbers, references) and annotations. An
// annotation's HostAnnot and NdxAnnot are one handle value.
#include "engine_tables.h"

namespace testhost {
namespace {

using hostops::Op;
using Kind = PdfObject::Kind;

int TypeOf(Kind kind) {
    switch (kind) {
        case Kind::kNumber:
            return kNdxObjectNumber;
        case Kind::kString:
            return kNdxObjectString;
        case Kind::kName:
            return kNdxObjectName;
        case Kind::kArray:
            return kNdxObjectArray;
        case Kind::kDict:
            return kNdxObjectDictionary;
        case Kind::kReference:
            return kNdxObjectReference;
    }
    return kNdxObjectNull;
}

// Sets an entry to a new object of `kind` filled by `fill`.
template <typename Fill>
void SetNew(MemoryEngine& e, NdxObject dict, const char* key, Kind kind, Fill fill) {
    if (key == nullptr || e.Object(dict) == nullptr)
        return;
    const NdxObject value = e.NewObject(kind);
    fill(*e.Object(value));
    e.SetEntry(dict, key, value);
}

NdxObject AnnotDict(MemoryEngine& e, const void* annot) {
    const Annotation* found = e.AnnotOf(annot);
    return found != nullptr ? found->dict : nullptr;
}

void RegisterObjects(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXObjectGetType>([](NdxObject object) {
        return Serve(static_cast<int>(kNdxObjectNull), [&](MemoryEngine& e) {
            const PdfObject* found = e.Object(object);
            return found != nullptr ? TypeOf(found->kind) : static_cast<int>(kNdxObjectNull);
        });
    });
    // Objects that became part of another object or of an annotation are the document's.
    tables.Register<Op::NDXObjectDestroy>([](NdxObject object) {
        Serve([&](MemoryEngine& e) {
            const PdfObject* found = e.Object(object);
            if (found != nullptr && !found->attached)
                e.objects.Erase(object);
        });
    });
    tables.Register<Op::NDXObjectGetDirect>([](NdxObject object) {
        return Serve<NdxObject>(nullptr, [&](MemoryEngine& e) -> NdxObject {
            const PdfObject* found = e.Object(object);
            if (found == nullptr)
                return nullptr;
            return found->kind == Kind::kReference ? found->target : object;
        });
    });
    tables.Register<Op::NDXStringGetBytes>([](NdxObject string, HostByteString out) {
        Serve([&](MemoryEngine& e) {
            const PdfObject* found = e.Object(string);
            SetBytes(
                e, out,
                found != nullptr && found->kind == Kind::kString ? found->text : std::string());
        });
    });
}

void RegisterArrays(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXArrayNew>([] {
        return Serve<NdxObject>(nullptr, [](MemoryEngine& e) { return e.NewObject(Kind::kArray); });
    });
    tables.Register<Op::NDXArrayCount>([](NdxObject array) {
        return Serve(0, [&](MemoryEngine& e) {
            const PdfObject* found = e.Object(array);
            return found != nullptr && found->kind == Kind::kArray
                       ? static_cast<int>(found->items.size())
                       : 0;
        });
    });
    tables.Register<Op::NDXArrayGetNumber>([](NdxObject array, int index) {
        return Serve(0.0f, [&](MemoryEngine& e) {
            const PdfObject* found = e.Object(array);
            if (found == nullptr || found->kind != Kind::kArray || index < 0 ||
                static_cast<std::size_t>(index) >= found->items.size())
                return 0.0f;
            const PdfObject* item = e.Object(found->items[static_cast<std::size_t>(index)]);
            return item != nullptr && item->kind == Kind::kNumber ? static_cast<float>(item->number)
                                                                  : 0.0f;
        });
    });
    tables.Register<Op::NDXArrayAddNumber>([](NdxObject array, float value) {
        Serve([&](MemoryEngine& e) {
            PdfObject* found = e.Object(array);
            if (found == nullptr || found->kind != Kind::kArray)
                return;
            const NdxObject item = e.NewObject(Kind::kNumber);
            e.Object(item)->number = value;
            e.Object(item)->attached = true;
            e.Object(array)->items.push_back(item);
        });
    });
}

void RegisterDictionaries(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXDictNew>([] {
        return Serve<NdxObject>(nullptr, [](MemoryEngine& e) { return e.NewObject(Kind::kDict); });
    });
    tables.Register<Op::NDXDictGet>([](NdxObject dict, const char* key) {
        return Serve<NdxObject>(nullptr,
                                [&](MemoryEngine& e) { return e.Entry(dict, TextOf(key)); });
    });
    tables.Register<Op::NDXDictGetString>([](NdxObject dict, const char* key, HostByteString out) {
        Serve([&](MemoryEngine& e) {
            const PdfObject* value = e.Object(e.Entry(dict, TextOf(key)));
            const bool text =
                value != nullptr && (value->kind == Kind::kString || value->kind == Kind::kName);
            SetBytes(e, out, text ? value->text : std::string());
        });
    });
    tables.Register<Op::NDXDictSetObject>(
        [](NdxObject dict, const char* key, NdxObject value, NdxDoc) {
            Serve([&](MemoryEngine& e) { e.SetEntry(dict, TextOf(key), value); });
        });
    tables.Register<Op::NDXDictSetName>([](NdxObject dict, const char* key, const char* name) {
        Serve([&](MemoryEngine& e) {
            SetNew(e, dict, key, Kind::kName, [&](PdfObject& o) { o.text = TextOf(name); });
        });
    });
    tables.Register<Op::NDXDictSetString>(
        [](NdxObject dict, const char* key, HostByteString value) {
            Serve([&](MemoryEngine& e) {
                const std::string* bytes = e.byteStrings.Find(value);
                SetNew(e, dict, key, Kind::kString,
                       [&](PdfObject& o) { o.text = bytes != nullptr ? *bytes : std::string(); });
            });
        });
    tables.Register<Op::NDXDictSetInteger>([](NdxObject dict, const char* key, int value) {
        Serve([&](MemoryEngine& e) {
            SetNew(e, dict, key, Kind::kNumber, [&](PdfObject& o) { o.number = value; });
        });
    });
    tables.Register<Op::NDXDictSetReference>(
        [](NdxObject dict, const char* key, NdxDoc, NdxObject target) {
            Serve([&](MemoryEngine& e) {
                if (e.Object(target) == nullptr)
                    return;
                SetNew(e, dict, key, Kind::kReference, [&](PdfObject& o) { o.target = target; });
            });
        });
    tables.Register<Op::NDXDictSetRect>([](NdxObject dict, const char* key, NdxRect rect) {
        Serve([&](MemoryEngine& e) {
            if (key == nullptr || e.Object(dict) == nullptr)
                return;
            e.SetEntry(dict, key, e.NewNumberArray({rect.left, rect.bottom, rect.right, rect.top}));
        });
    });
}

void RegisterAnnotations(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXHostAnnotGetPdfAnnot>([](HostAnnot annot) {
        return Serve<NdxAnnot>(nullptr, [&](MemoryEngine& e) {
            return e.AnnotOf(annot) != nullptr ? Same<NdxAnnot>(annot) : nullptr;
        });
    });
    tables.Register<Op::NDXAnnotGetDict>([](NdxAnnot annot) {
        return Serve<NdxObject>(nullptr, [&](MemoryEngine& e) { return AnnotDict(e, annot); });
    });
    tables.Register<Op::NDXAnnotGetSubtype>([](NdxAnnot annot, HostByteString out) {
        Serve([&](MemoryEngine& e) {
            const PdfObject* subtype = e.Object(e.Entry(AnnotDict(e, annot), "Subtype"));
            SetBytes(e, out, subtype != nullptr ? subtype->text : std::string());
        });
    });
    tables.Register<Op::NDXAnnotGetRect>([](NdxAnnot annot) {
        return Serve(NdxRect{0, 0, 0, 0}, [&](MemoryEngine& e) {
            return e.RectOf(AnnotDict(e, annot), "Rect").value_or(NdxRect{0, 0, 0, 0});
        });
    });
    tables.Register<Op::NDXAnnotListGet>([](NdxPage page) {
        return Serve<NdxAnnotList>(nullptr, [&](MemoryEngine& e) {
            return e.PageOf(page) != nullptr ? Same<NdxAnnotList>(page) : nullptr;
        });
    });
    tables.Register<Op::NDXAnnotListCount>([](NdxAnnotList list) {
        return Serve(0, [&](MemoryEngine& e) {
            const Page* page = e.PageOf(list);
            return page != nullptr ? static_cast<int>(page->annots.size()) : 0;
        });
    });
    tables.Register<Op::NDXAnnotListGetAt>([](NdxAnnotList list, int index) {
        return Serve<NdxAnnot>(nullptr, [&](MemoryEngine& e) -> NdxAnnot {
            const Page* page = e.PageOf(list);
            if (page == nullptr || index < 0 ||
                static_cast<std::size_t>(index) >= page->annots.size())
                return nullptr;
            return Same<NdxAnnot>(page->annots[static_cast<std::size_t>(index)]);
        });
    });
}

}  // namespace

void RegisterObjectTables(pdfhost::TableManager& tables) {
    RegisterObjects(tables);
    RegisterArrays(tables);
    RegisterDictionaries(tables);
    RegisterAnnotations(tables);
}

}  // namespace testhost
