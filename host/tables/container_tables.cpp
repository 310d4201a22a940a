// Containers made and destroyed by the caller: maps, pointer arrays, string arrays and rectangle
// arrays. Reading outside an array gives the neutral value.
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

template <typename Vector>
bool InRange(const Vector& items, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < items.size();
}

// ---- Maps

HostMap MapNew(int capacity) {
    return Guarded<HostMap>(nullptr, [&](HostApp& app) {
        auto value = std::make_unique<MapValue>();
        if (capacity > 0)
            value->entries.reserve(static_cast<std::size_t>(capacity));
        return app.Values().maps.Add(std::move(value));
    });
}

void MapDestroy(HostMap map) {
    Guarded([&](HostApp& app) { app.Values().maps.Erase(map); });
}

void MapSet(HostMap map, const void* key, void* value) {
    Guarded([&](HostApp& app) {
        if (MapValue* entries = app.Values().maps.Find(map))
            entries->entries[key] = value;
    });
}

// ---- Pointer arrays

HostPtrArray PtrArrayNew() {
    return Guarded<HostPtrArray>(nullptr,
                                 [](HostApp& app) { return app.Values().ptrArrays.Emplace(); });
}

void PtrArrayDestroy(HostPtrArray array) {
    Guarded([&](HostApp& app) { app.Values().ptrArrays.Erase(array); });
}

int PtrArrayGetCount(HostPtrArray array) {
    return Guarded(0, [&](HostApp& app) {
        const PtrArrayValue* value = app.Values().ptrArrays.Find(array);
        return value != nullptr ? static_cast<int>(value->items.size()) : 0;
    });
}

void* PtrArrayGetAt(HostPtrArray array, int index) {
    return Guarded<void*>(nullptr, [&](HostApp& app) -> void* {
        const PtrArrayValue* value = app.Values().ptrArrays.Find(array);
        return value != nullptr && InRange(value->items, index)
                   ? value->items[static_cast<std::size_t>(index)]
                   : nullptr;
    });
}

void PtrArrayAdd(HostPtrArray array, void* element) {
    Guarded([&](HostApp& app) {
        if (PtrArrayValue* value = app.Values().ptrArrays.Find(array)) {
            value->items.push_back(element);
        }
    });
}

// ---- String arrays

HostStringArray StringArrayNew() {
    return Guarded<HostStringArray>(
        nullptr, [](HostApp& app) { return app.Values().stringArrays.Emplace(); });
}

void StringArrayDestroy(HostStringArray array) {
    Guarded([&](HostApp& app) { app.Values().stringArrays.Erase(array); });
}

// An index outside the array empties `out`.
void StringArrayGet(HostStringArray array, int index, HostWideString out) {
    Guarded([&](HostApp& app) {
        const StringArrayValue* value = app.Values().stringArrays.Find(array);
        if (value == nullptr)
            return;
        SetWide(app, out,
                InRange(value->items, index) ? value->items[static_cast<std::size_t>(index)]
                                             : std::wstring());
    });
}

int StringArrayCount(HostStringArray array) {
    return Guarded(0, [&](HostApp& app) {
        const StringArrayValue* value = app.Values().stringArrays.Find(array);
        return value != nullptr ? static_cast<int>(value->items.size()) : 0;
    });
}

// ---- Rectangle arrays

NdxRectArray RectArrayNew() {
    return Guarded<NdxRectArray>(nullptr,
                                 [](HostApp& app) { return app.Values().rectArrays.Emplace(); });
}

void RectArrayDestroy(NdxRectArray array) {
    Guarded([&](HostApp& app) { app.Values().rectArrays.Erase(array); });
}

int RectArrayGetCount(NdxRectArray array) {
    return Guarded(0, [&](HostApp& app) {
        const RectArrayValue* value = app.Values().rectArrays.Find(array);
        return value != nullptr ? static_cast<int>(value->items.size()) : 0;
    });
}

NdxRect RectArrayGetAt(NdxRectArray array, int index) {
    return Guarded(NdxRect{}, [&](HostApp& app) {
        const RectArrayValue* value = app.Values().rectArrays.Find(array);
        return value != nullptr && InRange(value->items, index)
                   ? value->items[static_cast<std::size_t>(index)]
                   : NdxRect{};
    });
}

void RectArrayAdd(NdxRectArray array, float left, float bottom, float right, float top) {
    Guarded([&](HostApp& app) {
        if (RectArrayValue* value = app.Values().rectArrays.Find(array)) {
            value->items.push_back(NdxRect{left, bottom, right, top});
        }
    });
}

}  // namespace

void RegisterContainerTables(TableManager& tables) {
    tables.Register<Op::HostMapNew>(&MapNew);
    tables.Register<Op::HostMapDestroy>(&MapDestroy);
    tables.Register<Op::HostMapSet>(&MapSet);
    tables.Register<Op::HostPtrArrayNew>(&PtrArrayNew);
    tables.Register<Op::HostPtrArrayDestroy>(&PtrArrayDestroy);
    tables.Register<Op::HostPtrArrayGetCount>(&PtrArrayGetCount);
    tables.Register<Op::HostPtrArrayGetAt>(&PtrArrayGetAt);
    tables.Register<Op::HostPtrArrayAdd>(&PtrArrayAdd);
    tables.Register<Op::HostStringArrayNew>(&StringArrayNew);
    tables.Register<Op::HostStringArrayDestroy>(&StringArrayDestroy);
    tables.Register<Op::HostStringArrayGet>(&StringArrayGet);
    tables.Register<Op::HostStringArrayCount>(&StringArrayCount);
    tables.Register<Op::NDXRectArrayNew>(&RectArrayNew);
    tables.Register<Op::NDXRectArrayDestroy>(&RectArrayDestroy);
    tables.Register<Op::NDXRectArrayGetCount>(&RectArrayGetCount);
    tables.Register<Op::NDXRectArrayGetAt>(&RectArrayGetAt);
    tables.Register<Op::NDXRectArrayAdd>(&RectArrayAdd);
}

}  // namespace pdfhost
