// The system's folder browser, rooted at the desktop, in its new style.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

// The chosen folder's path; nothing when the user cancelled or chose no file-system folder.
std::optional<std::wstring> BrowseForFolder(HWND parent, const std::wstring& title);
