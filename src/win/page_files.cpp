#include "page_files.h"

#include <windows.h>
// after windows.h, which it needs
#include <shlwapi.h>

#include "system_paths.h"
#include "win_handles.h"

namespace {

// The longest address the system makes of a path.
constexpr DWORD kMaxAddress = 2084;

struct PageFileInfo {
    const wchar_t* name;
    int resource;
    const wchar_t* type;
};

// RT_HTML is 23; the pictures are of the plug-in's own type "PNG".
const PageFileInfo kFiles[] = {
    {L"offline.html", 1028, MAKEINTRESOURCEW(23)},
    {L"upgrade.html", 1066, MAKEINTRESOURCEW(23)},
    {L"IE.png", 1067, L"PNG"},
    {L"tips.png", 1068, L"PNG"},
};

const PageFileInfo& InfoOf(PageFile file) {
    return kFiles[static_cast<int>(file)];
}

struct FileCloser {
    void operator()(HANDLE file) const { CloseHandle(file); }
};
using FileHandle = std::unique_ptr<void, FileCloser>;

FileHandle OpenFile(const std::wstring& path, DWORD access, DWORD disposition) {
    const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, disposition,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    return file == INVALID_HANDLE_VALUE ? FileHandle() : FileHandle(file);
}

void WriteFromResource(const std::wstring& path, PageFile file) {
    const PageFileInfo& info = InfoOf(file);
    const HMODULE module = ThisModuleHandle();
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(info.resource), info.type);
    if (found == nullptr)
        return;
    const HGLOBAL loaded = LoadResource(module, found);
    const void* bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (bytes == nullptr)
        return;
    const FileHandle target = OpenFile(path, GENERIC_WRITE, CREATE_ALWAYS);
    if (!target)
        return;
    DWORD written = 0;
    WriteFile(target.get(), bytes, SizeofResource(module, found), &written, nullptr);
}

std::wstring PathOf(const std::wstring& folder, PageFile file) {
    return folder + L"\\" + InfoOf(file).name;
}

}  // namespace

std::wstring EnsurePageFile(const std::wstring& folder, PageFile file) {
    const std::wstring path = PathOf(folder, file);
    if (OpenFile(path, GENERIC_READ, OPEN_EXISTING))
        return path;
    CreateDirectoryW(folder.c_str(), nullptr);
    WriteFromResource(path, file);
    if (file == PageFile::Upgrade) {
        for (PageFile picture : {PageFile::BrowserPicture, PageFile::TipsPicture})
            WriteFromResource(PathOf(folder, picture), picture);
    }
    return path;
}

std::wstring FileAddress(const std::wstring& path) {
    wchar_t address[kMaxAddress] = {};
    DWORD length = kMaxAddress;
    if (FAILED(UrlCreateFromPathW(path.c_str(), address, &length, 0)))
        return {};
    return address;
}
