// Where a batch begins on Windows. The user gathers PDF files (files, a folder's files, the host's
// open documents, or dropped files); each row is checked through the host, and the accepted rows
// with the output options make up the batch when the dialog ends with OK.
#pragma once

#include <windows.h>
// after windows.h, which it needs
#include <commctrl.h>
#include <oleidl.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/batch_choice.h"
#include "batch/mail_attachment_drop.h"
#include "batch_control_ids.h"
#include "com_ptr.h"
#include "win_dialog.h"

class HostApi;

enum FileListColumnIndex { kNameColumn = 0, kFolderColumn, kSizeColumn, kDateColumn, kErrorColumn };

// A row of the list and, once its check has passed, its record.
struct BatchFileRow {
    std::wstring path;
    std::wstring texts[5];  // by column
    std::string_view errorKey;
    std::wstring tip;  // the attachment's own name for a dropped mail attachment
    int64_t fileSize = 0;
    std::optional<int> pageCount;  // set for an accepted file
    bool selected = false;
    bool focused = false;
};

class BatchFilesDialog final : public WinDialog {
  public:
    explicit BatchFilesDialog(HostApi& host) : host_(host) {}
    ~BatchFilesDialog() override;

    // Adds the paths in order as the add-files entry does and returns once every added row is
    // checked: a missing path adds nothing, a folder adds its files in name order, and a file
    // already listed is not listed again.
    void AddPaths(const std::vector<std::wstring>& paths);
    // Lists the ".msg" files a mail drop was saved to, each with its attachment's name as its tip.
    void AddAttachments(const std::vector<DroppedAttachment>& attachments);

    const std::vector<BatchFileRow>& Rows() const { return rows_; }
    const OutputOptions& Options() const { return options_; }
    // The accepted files, their pages and the output options, as read at OK.
    BatchChoice Choice() const { return {files_, totalPages_, options_}; }

  protected:
    DialogTemplate Layout() const override;
    void OnInit() override;
    bool OnCommand(int id, int code) override;
    void OnNotify(const NMHDR& header) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    HWND List() const { return Item(kFileListView); }
    void AddPath(const std::wstring& path, std::vector<std::size_t>& added);
    void AddFile(const std::wstring& path, std::vector<std::size_t>& added);
    void CheckRows(const std::vector<std::size_t>& rows);
    int IconOf(const std::wstring& path);
    void ReadSelection();
    void ShowRows();
    void ShowAddMenu();
    void ChooseFiles();
    void ChooseFolder();
    void ChooseOpenDocuments();
    void ShowOptions();
    void RemoveSelected();
    void MoveCurrent(int step);
    void SortBy(int column);
    void ShowSortArrow() const;
    void UpdateStates();
    void Accept();

    HostApi& host_;
    std::vector<BatchFileRow> rows_;
    OutputOptions options_;
    std::vector<BatchFile> files_;
    int totalPages_ = 0;
    bool read_ = false;
    bool adding_ = false;
    bool showing_ = false;
    int sortColumn_ = -1;
    bool sortAscending_ = true;
    HIMAGELIST images_ = nullptr;  // owned by the list, which destroys it
    std::map<std::wstring, int> iconByExtension_;
    int warningIcon_ = -1;
    ComPtr<IDropTarget> dropTarget_;
    bool dropRegistered_ = false;  // revoked when the window goes
};

// Runs the file list over `parent`; the choice when the user ends it with OK.
std::optional<BatchChoice> ChooseBatchFilesWithDialog(HostApi& host, HWND parent);
