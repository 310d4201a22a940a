#include "system_paths.h"

#include <windows.h>

#include <vector>

namespace {

// A long path's room; the system's own limit for these calls.
constexpr DWORD kLongPath = 32768;

}  // namespace

HMODULE ThisModuleHandle() {
    HMODULE self = nullptr;
    // The module that holds this very function: the plug-in's library, not the host's program.
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&ThisModuleHandle), &self);
    return self;
}

std::wstring ThisModulePath() {
    const HMODULE self = ThisModuleHandle();
    if (self == nullptr)
        return {};
    std::vector<wchar_t> buffer(MAX_PATH);
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(self, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0)
            return {};
        if (length < buffer.size())
            return std::wstring(buffer.data(), length);
        if (buffer.size() >= kLongPath)
            return {};
        buffer.resize(buffer.size() * 2);
    }
}

std::wstring SystemTempFolder() {
    std::vector<wchar_t> buffer(MAX_PATH + 1);
    const DWORD length = GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size())
        return {};
    std::wstring folder(buffer.data(), length);
    if (folder.back() != L'\\')
        folder += L'\\';
    return folder;
}
