#include "runtime_folder_search.h"

#include <cwchar>

namespace {

constexpr std::size_t kLocationBufferBytes = 260;
constexpr std::size_t kVersionBufferBytes = 100;
constexpr int kArchitectureAmd64 = 9;
constexpr int kArchitectureIa64 = 6;

// "%d.%d.%d.%d" with all four numbers, read as the C library reads it.
bool ScansAsVersion(const std::wstring& name) {
    int a = 0;
    int b = 0;
    int c = 0;
    int d = 0;
    return std::swscanf(name.c_str(), L"%d.%d.%d.%d", &a, &b, &c, &d) == 4;
}

}  // namespace

const std::wstring& RuntimeFolderSearch::Find() {
    if (!found_) {
        std::wstring folder = FromRegistry(Kind::Runtime);
        if (folder.empty())
            folder = FromFolderScan(Kind::Runtime);
        if (folder.empty())
            folder = FromRegistry(Kind::Browser);
        if (folder.empty())
            folder = FromFolderScan(Kind::Browser);
        found_ = std::move(folder);
    }
    return *found_;
}

bool RuntimeFolderSearch::IsUsable(const std::wstring& folder) {
    return !folder.empty() && folder.find(L"\\Edge\\Application") == std::wstring::npos;
}

std::wstring RuntimeFolderSearch::FromRegistry(Kind kind) {
    const std::wstring product =
        kind == Kind::Runtime ? L"Microsoft EdgeWebView" : L"Microsoft Edge";
    const std::wstring keys[] = {
        L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + product,
        L"SOFTWARE\\WOW6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" + product,
    };
    for (const std::wstring& key : keys) {
        if (!registry_.CanOpen(key))
            continue;
        std::wstring location =
            registry_.ReadString(key, L"InstallLocation", kLocationBufferBytes).value_or(L"");
        const auto version = registry_.ReadString(key, L"Version", kVersionBufferBytes);
        if (!version)
            return {};  // a location alone never counts
        if (!location.ends_with(L'\\'))
            location += L'\\';
        return location + *version;
    }
    return {};
}

std::wstring RuntimeFolderSearch::FromFolderScan(Kind kind) {
    const wchar_t* tail = kind == Kind::Runtime ? L"\\Microsoft\\EdgeWebView\\Application\\"
                                                : L"\\Microsoft\\Edge\\Application\\";
    const int architecture = folders_.NativeArchitecture();
    const std::wstring base =
        architecture == kArchitectureAmd64 || architecture == kArchitectureIa64
            ? std::wstring(L"c:\\Program Files (x86)") + tail
            : folders_.LocalAppDataFolder() + tail;
    for (const std::wstring& name : folders_.Directories(base)) {
        if (ScansAsVersion(name))
            return base + name;
    }
    return {};
}
