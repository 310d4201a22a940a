// What the table functions share: the way to the host, guarded calls, and the lookup of the
// handles they receive. Every table function checks its handles here and answers a null, stale
// or foreign handle with the neutral result of its type.
#pragma once

#include <string>
#include <utility>

#include "host_app.h"
#include "wide_text.h"

namespace pdfhost::tables {

// Runs `body` and gives its result; with no host, or when it throws, gives `neutral`. No
// exception may cross into a plug-in.
template <typename Result, typename Body>
Result Guarded(Result neutral, Body&& body) noexcept {
    if (HostApp::Current() == nullptr)
        return neutral;
    try {
        return body(*HostApp::Current());
    } catch (...) {
        return neutral;
    }
}

template <typename Body>
void Guarded(Body&& body) noexcept {
    if (HostApp::Current() == nullptr)
        return;
    try {
        body(*HostApp::Current());
    } catch (...) {
    }
}

// A text the plug-in passed, empty for a null pointer.
inline std::string TextOf(const char* text) {
    return text != nullptr ? text : "";
}
inline std::wstring TextOf(const wchar_t* text) {
    return text != nullptr ? text : L"";
}

inline WideStringValue* FindWide(HostApp& app, HostWideString handle) {
    return app.Values().wideStrings.Find(handle);
}

inline ByteStringValue* FindBytes(HostApp& app, HostByteString handle) {
    return app.Values().byteStrings.Find(handle);
}

// Fills a wide out-string when the handle is known.
inline void SetWide(HostApp& app, HostWideString out, std::wstring text) {
    if (WideStringValue* value = FindWide(app, out))
        value->text = std::move(text);
}

inline void SetWideUtf8(HostApp& app, HostWideString out, std::string_view utf8) {
    SetWide(app, out, WideOf(utf8));
}

inline void SetBytes(HostApp& app, HostByteString out, std::string bytes) {
    if (ByteStringValue* value = FindBytes(app, out))
        value->bytes = std::move(bytes);
}

inline HostDocument* FindDocument(HostApp& app, HostDoc handle) {
    HostDocument* document = app.Documents().Find(handle);
    return document != nullptr && !document->IsClosing() ? document : nullptr;
}

// The open document whose PDF is `doc`; null for an unknown or closing one.
inline HostDocument* FindPdf(HostApp& app, NdxDoc doc) {
    HostDocument* document = app.Documents().FindByPdf(doc);
    return document != nullptr && !document->IsClosing() ? document : nullptr;
}

}  // namespace pdfhost::tables
