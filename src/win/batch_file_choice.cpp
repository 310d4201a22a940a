#include "batch_file_choice.h"

#include "batch/file_check.h"
#include "win_file_dialog.h"

namespace {

// Hide read-only, allow several files, files must exist.
constexpr unsigned kOpenSeveralFlags = 0x4 | 0x200 | 0x1000;

}  // namespace

std::optional<BatchChoice> ChooseBatchFilesWithDialog(HostApi& host, HWND parent) {
    FileDialogSettings settings;
    settings.defaultExtension = L".pdf";
    settings.initialName = L"";
    settings.filter = L"PDF Files (*.pdf)|*.pdf||";
    settings.flags = kOpenSeveralFlags;
    settings.parent = reinterpret_cast<HostWindow>(parent);
    WinFileDialog dialog(settings);
    if (!dialog.Run())
        return std::nullopt;
    BatchChoice choice;
    for (const std::wstring& path : dialog.Paths()) {
        const FileCheck check = CheckBatchFile(host, path);
        if (!check.accepted())
            continue;
        choice.files.push_back(BatchFile{path, check.fileSize, check.pageCount});
        choice.totalPages += check.pageCount;
    }
    if (choice.files.empty())
        return std::nullopt;
    return choice;
}
