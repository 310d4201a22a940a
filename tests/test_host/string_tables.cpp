// Strings and containers.
#include <cstring>

#include "engine_tables.h"

namespace testhost {
namespace {

using hostops::Op;

std::wstring* Wide(MemoryEngine& engine, HostWideString handle) {
    return engine.wideStrings.Find(handle);
}
std::string* Bytes(MemoryEngine& engine, HostByteString handle) {
    return engine.byteStrings.Find(handle);
}

// A text as a PDF text string: as it stands when it is ASCII, else UTF-16BE after its byte
// order mark.
std::string PdfTextOf(const std::wstring& text) {
    bool ascii = true;
    for (const wchar_t c : text)
        ascii = ascii && static_cast<uint32_t>(c) < 0x80;
    if (ascii)
        return std::string(text.begin(), text.end());
    std::string bytes = "\xFE\xFF";
    const auto unit = [&](uint32_t u) {
        bytes += static_cast<char>((u >> 8) & 0xFF);
        bytes += static_cast<char>(u & 0xFF);
    };
    for (const wchar_t c : text) {
        const auto code = static_cast<uint32_t>(c);
        if (code > 0xFFFF) {
            unit(0xD800 + ((code - 0x10000) >> 10));
            unit(0xDC00 + ((code - 0x10000) & 0x3FF));
        } else {
            unit(code);
        }
    }
    return bytes;
}

void RegisterWideStrings(pdfhost::TableManager& tables) {
    tables.Register<Op::HostWideStringNew>([] {
        return Serve<HostWideString>(nullptr,
                                     [](MemoryEngine& e) { return e.wideStrings.Emplace(); });
    });
    tables.Register<Op::HostWideStringDelete>(
        [](HostWideString str) { Serve([&](MemoryEngine& e) { e.wideStrings.Erase(str); }); });
    tables.Register<Op::HostWideStringGetLength>([](HostWideString str) {
        return Serve(0, [&](MemoryEngine& e) {
            const std::wstring* text = Wide(e, str);
            return text != nullptr ? static_cast<int>(text->size()) : 0;
        });
    });
    tables.Register<Op::HostWideStringCompareText>([](HostWideString str, const wchar_t* text) {
        return Serve(0, [&](MemoryEngine& e) {
            const std::wstring* value = Wide(e, str);
            return value != nullptr ? value->compare(TextOf(text)) : 0;
        });
    });
    tables.Register<Op::HostWideStringSet>([](HostWideString str, const wchar_t* text) {
        Serve([&](MemoryEngine& e) { SetWide(e, str, TextOf(text)); });
    });
    tables.Register<Op::HostWideStringAppend>([](HostWideString str, HostWideString tail) {
        Serve([&](MemoryEngine& e) {
            std::wstring* value = Wide(e, str);
            const std::wstring* end = Wide(e, tail);
            if (value != nullptr && end != nullptr)
                *value += *end;
        });
    });
    tables.Register<Op::HostWideStringAppendText>([](HostWideString str, const wchar_t* text) {
        Serve([&](MemoryEngine& e) {
            if (std::wstring* value = Wide(e, str))
                *value += TextOf(text);
        });
    });
    tables.Register<Op::HostWideStringClear>(
        [](HostWideString str) { Serve([&](MemoryEngine& e) { SetWide(e, str, {}); }); });
    tables.Register<Op::HostWideStringData>([](HostWideString str) {
        return Serve<const wchar_t*>(nullptr, [&](MemoryEngine& e) -> const wchar_t* {
            const std::wstring* value = Wide(e, str);
            return value != nullptr ? value->c_str() : nullptr;
        });
    });
}

void RegisterByteStrings(pdfhost::TableManager& tables) {
    tables.Register<Op::HostByteStringNew>([] {
        return Serve<HostByteString>(nullptr,
                                     [](MemoryEngine& e) { return e.byteStrings.Emplace(); });
    });
    tables.Register<Op::HostByteStringDelete>(
        [](HostByteString str) { Serve([&](MemoryEngine& e) { e.byteStrings.Erase(str); }); });
    tables.Register<Op::HostByteStringGetLength>([](HostByteString str) {
        return Serve(0, [&](MemoryEngine& e) {
            const std::string* bytes = Bytes(e, str);
            return bytes != nullptr ? static_cast<int>(bytes->size()) : 0;
        });
    });
    tables.Register<Op::HostByteStringIsEmpty>([](HostByteString str) {
        return Serve(1, [&](MemoryEngine& e) {
            const std::string* bytes = Bytes(e, str);
            return bytes == nullptr || bytes->empty() ? 1 : 0;
        });
    });
    tables.Register<Op::HostByteStringEquals>([](HostByteString a, HostByteString b) {
        return Serve(0, [&](MemoryEngine& e) {
            const std::string* left = Bytes(e, a);
            const std::string* right = Bytes(e, b);
            return left != nullptr && right != nullptr && *left == *right ? 1 : 0;
        });
    });
    tables.Register<Op::HostByteStringSet>([](HostByteString str, const char* text) {
        Serve([&](MemoryEngine& e) { SetBytes(e, str, TextOf(text)); });
    });
    tables.Register<Op::HostByteStringAppendText>([](HostByteString str, const char* text) {
        Serve([&](MemoryEngine& e) {
            if (std::string* bytes = Bytes(e, str))
                *bytes += TextOf(text);
        });
    });
    tables.Register<Op::HostByteStringData>([](HostByteString str) {
        return Serve<const char*>(nullptr, [&](MemoryEngine& e) -> const char* {
            const std::string* bytes = Bytes(e, str);
            return bytes != nullptr ? bytes->c_str() : nullptr;
        });
    });
    tables.Register<Op::HostTextToPdfString>(
        [](const wchar_t* text, int length, int, HostByteString out) {
            Serve([&](MemoryEngine& e) {
                if (text == nullptr || length < 0)
                    return SetBytes(e, out, {});
                SetBytes(e, out, PdfTextOf(std::wstring(text, static_cast<std::size_t>(length))));
            });
        });
}

void RegisterContainers(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXRectArrayNew>([] {
        return Serve<NdxRectArray>(nullptr, [](MemoryEngine& e) { return e.rectArrays.Emplace(); });
    });
    tables.Register<Op::NDXRectArrayDestroy>(
        [](NdxRectArray array) { Serve([&](MemoryEngine& e) { e.rectArrays.Erase(array); }); });
    tables.Register<Op::NDXRectArrayGetCount>([](NdxRectArray array) {
        return Serve(0, [&](MemoryEngine& e) {
            const auto* rects = e.rectArrays.Find(array);
            return rects != nullptr ? static_cast<int>(rects->size()) : 0;
        });
    });
    tables.Register<Op::NDXRectArrayGetAt>([](NdxRectArray array, int index) {
        return Serve(NdxRect{0, 0, 0, 0}, [&](MemoryEngine& e) {
            const auto* rects = e.rectArrays.Find(array);
            if (rects == nullptr || index < 0 || static_cast<std::size_t>(index) >= rects->size())
                return NdxRect{0, 0, 0, 0};
            return (*rects)[static_cast<std::size_t>(index)];
        });
    });
    tables.Register<Op::NDXRectArrayAdd>(
        [](NdxRectArray array, float left, float bottom, float right, float top) {
            Serve([&](MemoryEngine& e) {
                if (auto* rects = e.rectArrays.Find(array))
                    rects->push_back(NdxRect{left, bottom, right, top});
            });
        });
    tables.Register<Op::NDXRectInflate>(
        [](NdxRect* rect, float left, float bottom, float right, float top) {
            if (rect != nullptr) {
                *rect = NdxRect{rect->left - left, rect->bottom - bottom, rect->right + right,
                                rect->top + top};
            }
        });
    tables.Register<Op::HostPtrArrayNew>([] {
        return Serve<HostPtrArray>(nullptr, [](MemoryEngine& e) { return e.ptrArrays.Emplace(); });
    });
    tables.Register<Op::HostPtrArrayDestroy>(
        [](HostPtrArray array) { Serve([&](MemoryEngine& e) { e.ptrArrays.Erase(array); }); });
    tables.Register<Op::HostPtrArrayGetCount>([](HostPtrArray array) {
        return Serve(0, [&](MemoryEngine& e) {
            const auto* items = e.ptrArrays.Find(array);
            return items != nullptr ? static_cast<int>(items->size()) : 0;
        });
    });
    tables.Register<Op::HostPtrArrayGetAt>([](HostPtrArray array, int index) {
        return Serve<void*>(nullptr, [&](MemoryEngine& e) -> void* {
            const auto* items = e.ptrArrays.Find(array);
            if (items == nullptr || index < 0 || static_cast<std::size_t>(index) >= items->size())
                return nullptr;
            return (*items)[static_cast<std::size_t>(index)];
        });
    });
    tables.Register<Op::HostPtrArrayAdd>([](HostPtrArray array, void* element) {
        Serve([&](MemoryEngine& e) {
            if (auto* items = e.ptrArrays.Find(array))
                items->push_back(element);
        });
    });
}

}  // namespace

void RegisterStringTables(pdfhost::TableManager& tables) {
    RegisterWideStrings(tables);
    RegisterByteStrings(tables);
    RegisterContainers(tables);
}

}  // namespace testhost
