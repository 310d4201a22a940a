// The test host's host functions over its MemoryEngine, registered typed through the operation
// list as pdfhost's tables are. Operations the engine does not serve are not registered: the
// plug-in's table client answers them with neutral results.
#pragma once

#include <string>

#include "memory_engine.h"
#include "table_manager.h"

namespace testhost {

// Runs `body` on the current engine and gives its result; with no engine, or when it throws,
// gives `neutral`. No exception may cross into the plug-in.
template <typename Result, typename Body>
Result Serve(Result neutral, Body&& body) noexcept {
    MemoryEngine* engine = MemoryEngine::Current();
    if (engine == nullptr)
        return neutral;
    try {
        return body(*engine);
    } catch (...) {
        return neutral;
    }
}

template <typename Body>
void Serve(Body&& body) noexcept {
    MemoryEngine* engine = MemoryEngine::Current();
    if (engine == nullptr)
        return;
    try {
        body(*engine);
    } catch (...) {
    }
}

inline std::wstring TextOf(const wchar_t* text) {
    return text != nullptr ? text : L"";
}
inline std::string TextOf(const char* text) {
    return text != nullptr ? text : "";
}

// Fills an out-string when its handle is known.
inline void SetWide(MemoryEngine& engine, HostWideString out, std::wstring text) {
    if (std::wstring* value = engine.wideStrings.Find(out))
        *value = std::move(text);
}
inline void SetBytes(MemoryEngine& engine, HostByteString out, std::string bytes) {
    if (std::string* value = engine.byteStrings.Find(out))
        *value = std::move(bytes);
}

void RegisterStringTables(pdfhost::TableManager& tables);
void RegisterAppTables(pdfhost::TableManager& tables);
// The "login" table with only its server address: the account server the plug-in asks for its
// service document.
void OfferLoginServer(MemoryEngine& engine);
void RegisterRibbonTables(pdfhost::TableManager& tables);
void RegisterDocumentTables(pdfhost::TableManager& tables);
void RegisterTextTables(pdfhost::TableManager& tables);
void RegisterObjectTables(pdfhost::TableManager& tables);

}  // namespace testhost
