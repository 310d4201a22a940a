#include "win_file_dialog.h"

#include <algorithm>

namespace {

// The settings' flags are the system's own; the dialog always takes the modern look.
constexpr DWORD kAlwaysFlags = OFN_EXPLORER;

}  // namespace

std::wstring SystemFilterOf(const std::wstring& filter) {
    std::wstring converted = filter;
    std::replace(converted.begin(), converted.end(), L'|', L'\0');
    // Closed by two NULs whatever the text ended with.
    while (!converted.empty() && converted.back() == L'\0')
        converted.pop_back();
    if (converted.empty())
        return {};
    converted.append(2, L'\0');
    return converted;
}

std::vector<std::wstring> ChosenPaths(const wchar_t* names, std::size_t room) {
    std::vector<std::wstring> parts;
    std::size_t at = 0;
    while (at < room && names[at] != L'\0') {
        std::size_t end = at;
        while (end < room && names[end] != L'\0')
            ++end;
        parts.emplace_back(names + at, end - at);
        at = end + 1;
    }
    if (parts.size() <= 1)
        return parts;
    std::wstring folder = parts.front();
    if (folder.back() != L'\\')
        folder += L'\\';
    std::vector<std::wstring> paths;
    for (std::size_t i = 1; i < parts.size(); ++i)
        paths.push_back(folder + parts[i]);
    return paths;
}

WinFileDialog::WinFileDialog(const FileDialogSettings& settings)
    : save_(settings.save),
      filter_(SystemFilterOf(settings.filter)),
      extension_(settings.defaultExtension),
      names_(kNameRoom, L'\0') {
    if (!extension_.empty() && extension_.front() == L'.')
        extension_.erase(0, 1);
    // The initial name goes in the buffer; a pattern such as "*.pdf" filters the folder's list.
    const std::wstring& initial = settings.initialName;
    std::copy_n(initial.begin(), std::min(initial.size(), kNameRoom - 1), names_.begin());
    record_.lStructSize = sizeof record_;
    record_.hwndOwner = reinterpret_cast<HWND>(settings.parent);
    record_.lpstrFilter = filter_.empty() ? nullptr : filter_.c_str();
    record_.nFilterIndex = 1;
    record_.lpstrFile = names_.data();
    record_.nMaxFile = static_cast<DWORD>(names_.size());
    record_.lpstrDefExt = extension_.empty() ? nullptr : extension_.c_str();
    record_.Flags = settings.flags | kAlwaysFlags;
}

bool WinFileDialog::Run() {
    paths_.clear();
    const BOOL chosen = save_ ? GetSaveFileNameW(&record_) : GetOpenFileNameW(&record_);
    if (!chosen)
        return false;
    paths_ = ChosenPaths(names_.data(), names_.size());
    return true;
}
