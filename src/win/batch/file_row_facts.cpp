#include "file_row_facts.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>

#include "win_handles.h"

namespace {

// The first entry matching `pattern`; an empty handle when none does.
FindHandle FindFirstEntry(const std::wstring& pattern, WIN32_FIND_DATAW& entry) {
    const HANDLE find = FindFirstFileW(pattern.c_str(), &entry);
    return find == INVALID_HANDLE_VALUE ? FindHandle() : FindHandle(find);
}

}  // namespace

std::optional<FileFacts> FileFactsOf(const std::wstring& path) {
    WIN32_FIND_DATAW data{};
    if (!FindFirstEntry(path, data))
        return std::nullopt;
    FileFacts facts;
    facts.size = (static_cast<int64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    FILETIME local{};
    SYSTEMTIME time{};
    if (FileTimeToLocalFileTime(&data.ftLastWriteTime, &local) &&
        FileTimeToSystemTime(&local, &time)) {
        wchar_t text[32];
        std::swprintf(text, 32, L"%02u/%02u/%04u %02u:%02u:%02u", time.wMonth, time.wDay,
                      time.wYear, time.wHour, time.wMinute, time.wSecond);
        facts.modified = text;
    }
    return facts;
}

std::wstring FullLongPath(const std::wstring& path) {
    std::wstring full(32768, L'\0');
    DWORD length =
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length == 0 || length >= full.size())
        return path;
    full.resize(length);
    std::wstring expanded(32768, L'\0');
    length = GetLongPathNameW(full.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
    if (length == 0 || length >= expanded.size())
        return full;
    expanded.resize(length);
    return expanded;
}

FolderAndName SplitPath(const std::wstring& path) {
    const std::size_t separator = path.find_last_of(L"\\/");
    if (separator == std::wstring::npos)
        return {L"", path};
    std::wstring folder = path.substr(0, separator);
    if (folder.empty() || folder.back() == L':')
        folder += path[separator];
    return {folder, path.substr(separator + 1)};
}

std::vector<std::wstring> FilesInFolder(const std::wstring& folder) {
    std::wstring base = folder;
    if (!base.empty() && base.back() != L'\\' && base.back() != L'/')
        base += L'\\';
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW data{};
    const FindHandle find = FindFirstEntry(base + L"*.*", data);
    if (!find)
        return {};
    do {
        if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            names.emplace_back(data.cFileName);
    } while (FindNextFileW(find.get(), &data));
    std::sort(names.begin(), names.end());
    for (std::wstring& name : names)
        name = base + name;
    return names;
}
