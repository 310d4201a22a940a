#include "system_runtime_readers.h"

#include <windows.h>
// after windows.h, which they need
#include <shlobj.h>

#include "win_handles.h"

namespace {

RegistryKey OpenMachineKey(const std::wstring& key) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS)
        return RegistryKey();
    return RegistryKey(opened);
}

// The first entry of a listing; no owner when there is none.
FindHandle StartFind(const std::wstring& pattern, WIN32_FIND_DATAW& entry) {
    const HANDLE find = FindFirstFileW(pattern.c_str(), &entry);
    return find == INVALID_HANDLE_VALUE ? FindHandle() : FindHandle(find);
}

}  // namespace

bool SystemRegistryReader::CanOpen(const std::wstring& key) {
    return OpenMachineKey(key) != nullptr;
}

std::optional<std::wstring> SystemRegistryReader::ReadString(const std::wstring& key,
                                                             const std::wstring& name,
                                                             std::size_t bufferBytes) {
    const RegistryKey opened = OpenMachineKey(key);
    if (!opened)
        return std::nullopt;
    // One more character than offered keeps a value that fills the buffer terminated.
    std::wstring buffer(bufferBytes / sizeof(wchar_t) + 1, L'\0');
    DWORD type = 0;
    DWORD size = static_cast<DWORD>(bufferBytes);
    if (RegQueryValueExW(opened.get(), name.c_str(), nullptr, &type,
                         reinterpret_cast<BYTE*>(buffer.data()), &size) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ)) {
        return std::nullopt;
    }
    buffer.resize(size / sizeof(wchar_t));
    while (!buffer.empty() && buffer.back() == L'\0')
        buffer.pop_back();
    return buffer;
}

std::vector<std::wstring> SystemFolderLister::Directories(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry{};
    const FindHandle find = StartFind(folder + L"*", entry);
    if (!find)
        return names;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            names.emplace_back(entry.cFileName);
    } while (FindNextFileW(find.get(), &entry));
    return names;
}

int SystemFolderLister::NativeArchitecture() {
    SYSTEM_INFO info{};
    GetNativeSystemInfo(&info);
    return info.wProcessorArchitecture;
}

std::wstring SystemFolderLister::LocalAppDataFolder() {
    return LocalAppDataPath();
}

std::wstring LocalAppDataPath() {
    PWSTR path = nullptr;
    if (FAILED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &path)))
        return {};
    const CoTaskString owned(path);
    return owned.get();
}
