// The plain values that plug-ins make with a ...New function and free with the matching
// Delete/Destroy: host strings, containers, parse options, resource handles and PDF values.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "base64_encoder.h"
#include "engine/pdf_value.h"
#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

struct WideStringValue {
    std::wstring text;
};

struct ByteStringValue {
    std::string bytes;
};

struct MapValue {
    std::unordered_map<const void*, void*> entries;
};

struct PtrArrayValue {
    std::vector<void*> items;
};

struct StringArrayValue {
    std::vector<std::wstring> items;
};

struct RectArrayValue {
    std::vector<NdxRect> items;
};

// A flattening of a document's form in progress.
struct FlattenerValue {
    NdxDoc document = nullptr;
};

struct ParseOptionsValue {
    int values[4] = {};
};

struct ResourcesValue {
    std::wstring modulePath;
    int language = 0;
};

struct ValueHandles {
    HandlePool<HostWideString, WideStringValue> wideStrings;
    HandlePool<HostByteString, ByteStringValue> byteStrings;
    HandlePool<HostMap, MapValue> maps;
    HandlePool<HostPtrArray, PtrArrayValue> ptrArrays;
    HandlePool<HostStringArray, StringArrayValue> stringArrays;
    HandlePool<NdxRectArray, RectArrayValue> rectArrays;
    HandlePool<NdxParseOptions, ParseOptionsValue> parseOptions;
    HandlePool<HostResources, ResourcesValue> resources;
    // Dictionaries and arrays a plug-in builds (NDXDictNew, NDXArrayNew) before handing them
    // to a document.
    HandlePool<NdxObject, engine::PdfValue> pdfValues;
    HandlePool<HostBase64Encoder, Base64Encoder> base64Encoders;
    HandlePool<NdxFlattener, FlattenerValue> flatteners;
};

}  // namespace pdfhost
