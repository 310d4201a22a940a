// The system's open and save dialogs, set up from the dialog settings of the portable code. The
// handle the host's file-dialog operations take is the dialog's OPENFILENAMEW record.
#pragma once

#include <windows.h>
// after windows.h, which it needs
#include <commdlg.h>

#include <string>
#include <vector>

#include "app/platform_services.h"

class WinFileDialog final : public FileDialog {
  public:
    explicit WinFileDialog(const FileDialogSettings& settings);
    WinFileDialog(const WinFileDialog&) = delete;
    WinFileDialog& operator=(const WinFileDialog&) = delete;

    HostFileDialog Handle() override { return reinterpret_cast<HostFileDialog>(&record_); }
    bool Run() override;
    std::vector<std::wstring> Paths() override { return paths_; }

    // The room for the chosen names, in characters: the total of several paths is limited to it.
    static constexpr std::size_t kNameRoom = 4096;

  private:
    const bool save_;
    std::wstring filter_;
    std::wstring extension_;
    std::vector<wchar_t> names_;
    OPENFILENAMEW record_{};
    std::vector<std::wstring> paths_;
};

// "Label|pattern|Label|pattern||" as the system's filter: each part ended by a NUL, the whole by a
// second one. Empty for an empty filter.
std::wstring SystemFilterOf(const std::wstring& filter);

// The chosen paths of a dialog's name buffer: a single full path, or the folder followed by the
// names, each ended by a NUL and the list by a second one.
std::vector<std::wstring> ChosenPaths(const wchar_t* names, std::size_t room);
