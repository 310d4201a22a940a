// The pages and pictures the page dialogs show without the network, copied from the plug-in's
// resources into the service folder under the host's user data folder.
#pragma once

#include <string>

enum class PageFile : int {
    Offline = 0,         // offline.html, HTML resource 1028
    Upgrade = 1,         // upgrade.html, HTML resource 1066, for the host's web view
    BrowserPicture = 2,  // IE.png, PNG resource 1067
    TipsPicture = 3,     // tips.png, PNG resource 1068
};

// The file's path in `folder`. The file is written from the resources only when it can't be
// opened; writing the upgrade page also writes the two pictures.
std::wstring EnsurePageFile(const std::wstring& folder, PageFile file);

// A file:/// address of a local path.
std::wstring FileAddress(const std::wstring& path);
