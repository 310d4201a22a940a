#include "folder_browser.h"

// after windows.h, which they need
#include <shlobj.h>

#include <memory>

#include "win_handles.h"

std::optional<std::wstring> BrowseForFolder(HWND parent, const std::wstring& title) {
    const ComApartment apartment;
    BROWSEINFOW info{};
    info.hwndOwner = parent;
    info.lpszTitle = title.c_str();
    info.ulFlags = BIF_NEWDIALOGSTYLE;
    const std::unique_ptr<ITEMIDLIST, CoTaskMemFreer> chosen(SHBrowseForFolderW(&info));
    if (!chosen)
        return std::nullopt;
    wchar_t path[MAX_PATH] = {};
    if (!SHGetPathFromIDListW(chosen.get(), path))
        return std::nullopt;
    return std::wstring(path);
}
