// Host strings: wide (UTF-32 text) and byte (PDF bytes or UTF-8), made and deleted by the caller.
#include <cwchar>

#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

// ---- Byte strings

HostByteString ByteNew() {
    return Guarded<HostByteString>(nullptr,
                                   [](HostApp& app) { return app.Values().byteStrings.Emplace(); });
}

void ByteDelete(HostByteString str) {
    Guarded([&](HostApp& app) { app.Values().byteStrings.Erase(str); });
}

int ByteGetLength(HostByteString str) {
    return Guarded(0, [&](HostApp& app) {
        const ByteStringValue* value = FindBytes(app, str);
        return value != nullptr ? static_cast<int>(value->bytes.size()) : 0;
    });
}

int ByteIsEmpty(HostByteString str) {
    return Guarded(0, [&](HostApp& app) {
        const ByteStringValue* value = FindBytes(app, str);
        return value != nullptr && value->bytes.empty() ? 1 : 0;
    });
}

int ByteEquals(HostByteString a, HostByteString b) {
    return Guarded(0, [&](HostApp& app) {
        const ByteStringValue* left = FindBytes(app, a);
        const ByteStringValue* right = FindBytes(app, b);
        return left != nullptr && right != nullptr && left->bytes == right->bytes ? 1 : 0;
    });
}

void ByteSet(HostByteString str, const char* text) {
    Guarded([&](HostApp& app) { SetBytes(app, str, TextOf(text)); });
}

void ByteAppend(HostByteString str, HostByteString tail) {
    Guarded([&](HostApp& app) {
        ByteStringValue* value = FindBytes(app, str);
        const ByteStringValue* end = FindBytes(app, tail);
        if (value != nullptr && end != nullptr)
            value->bytes += std::string(end->bytes);
    });
}

void ByteAppendText(HostByteString str, const char* text) {
    Guarded([&](HostApp& app) {
        if (ByteStringValue* value = FindBytes(app, str))
            value->bytes += TextOf(text);
    });
}

const char* ByteData(HostByteString str) {
    return Guarded<const char*>(nullptr, [&](HostApp& app) -> const char* {
        const ByteStringValue* value = FindBytes(app, str);
        return value != nullptr ? value->bytes.c_str() : nullptr;
    });
}

void ByteToWide(HostByteString str, HostWideString out) {
    Guarded([&](HostApp& app) {
        if (const ByteStringValue* value = FindBytes(app, str))
            SetWideUtf8(app, out, value->bytes);
    });
}

// ---- Wide strings

HostWideString WideNew() {
    return Guarded<HostWideString>(nullptr,
                                   [](HostApp& app) { return app.Values().wideStrings.Emplace(); });
}

void WideDelete(HostWideString str) {
    Guarded([&](HostApp& app) { app.Values().wideStrings.Erase(str); });
}

int WideGetLength(HostWideString str) {
    return Guarded(0, [&](HostApp& app) {
        const WideStringValue* value = FindWide(app, str);
        return value != nullptr ? static_cast<int>(value->text.size()) : 0;
    });
}

// 0 when equal; an unknown string is never equal to anything.
int WideCompareText(HostWideString str, const wchar_t* text) {
    return Guarded(-1, [&](HostApp& app) {
        const WideStringValue* value = FindWide(app, str);
        if (value == nullptr)
            return -1;
        const int order = value->text.compare(TextOf(text));
        return order < 0 ? -1 : (order > 0 ? 1 : 0);
    });
}

void WideSet(HostWideString str, const wchar_t* text) {
    Guarded([&](HostApp& app) { SetWide(app, str, TextOf(text)); });
}

void WideAppend(HostWideString str, HostWideString tail) {
    Guarded([&](HostApp& app) {
        WideStringValue* value = FindWide(app, str);
        const WideStringValue* end = FindWide(app, tail);
        if (value != nullptr && end != nullptr)
            value->text += std::wstring(end->text);
    });
}

void WideAppendText(HostWideString str, const wchar_t* text) {
    Guarded([&](HostApp& app) {
        if (WideStringValue* value = FindWide(app, str))
            value->text += TextOf(text);
    });
}

void WideClear(HostWideString str) {
    Guarded([&](HostApp& app) { SetWide(app, str, {}); });
}

const wchar_t* WideData(HostWideString str) {
    return Guarded<const wchar_t*>(nullptr, [&](HostApp& app) -> const wchar_t* {
        const WideStringValue* value = FindWide(app, str);
        return value != nullptr ? value->text.c_str() : nullptr;
    });
}

}  // namespace

void RegisterStringTables(TableManager& tables) {
    tables.Register<Op::HostByteStringNew>(&ByteNew);
    tables.Register<Op::HostByteStringDelete>(&ByteDelete);
    tables.Register<Op::HostByteStringGetLength>(&ByteGetLength);
    tables.Register<Op::HostByteStringIsEmpty>(&ByteIsEmpty);
    tables.Register<Op::HostByteStringEquals>(&ByteEquals);
    tables.Register<Op::HostByteStringSet>(&ByteSet);
    tables.Register<Op::HostByteStringAppend>(&ByteAppend);
    tables.Register<Op::HostByteStringAppendText>(&ByteAppendText);
    tables.Register<Op::HostByteStringData>(&ByteData);
    tables.Register<Op::HostByteStringToWide>(&ByteToWide);
    tables.Register<Op::HostWideStringNew>(&WideNew);
    tables.Register<Op::HostWideStringDelete>(&WideDelete);
    tables.Register<Op::HostWideStringGetLength>(&WideGetLength);
    tables.Register<Op::HostWideStringCompareText>(&WideCompareText);
    tables.Register<Op::HostWideStringSet>(&WideSet);
    tables.Register<Op::HostWideStringAppend>(&WideAppend);
    tables.Register<Op::HostWideStringAppendText>(&WideAppendText);
    tables.Register<Op::HostWideStringClear>(&WideClear);
    tables.Register<Op::HostWideStringData>(&WideData);
}

}  // namespace pdfhost
