#include "batch_files_dialog.h"

// after windows.h, which they need
#include <commctrl.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <algorithm>
#include <cwctype>
#include <memory>

#include "batch/file_check.h"
#include "batch/file_list_order.h"
#include "batch/overwrite_check.h"
#include "batch_wide_texts.h"
#include "file_drop_target.h"
#include "file_row_facts.h"
#include "folder_browser.h"
#include "host/host_string.h"
#include "list_view_rows.h"
#include "open_documents_dialog.h"
#include "output_option_dialog.h"
#include "overwrite_list_dialog.h"
#include "system_paths.h"
#include "win_file_dialog.h"

namespace {

// Allow several files, files must exist.
constexpr unsigned kSeveralExistingFiles = OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST;
constexpr int kColumnWidths[] = {200, 220, 80, 140, 200};
constexpr const char* kColumnKeys[] = {"IDS_STR_FILEPATH", "IDS_STR_FILELOCATION",
                                       "IDS_STR_FILESIZE", "IDS_STR_FILEMOD", "IDS_STR_ERROR"};

struct MenuDestroyer {
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using OwnedMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDestroyer>;

struct IconDestroyer {
    void operator()(HICON icon) const { DestroyIcon(icon); }
};
using OwnedIcon = std::unique_ptr<std::remove_pointer_t<HICON>, IconDestroyer>;

std::wstring LowerExtensionOf(const std::wstring& path) {
    const std::wstring name = SplitPath(path).name;
    const std::size_t dot = name.rfind(L'.');
    std::wstring extension = dot == std::wstring::npos ? L"" : name.substr(dot);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](wchar_t c) { return static_cast<wchar_t>(std::towlower(c)); });
    return extension;
}

}  // namespace

BatchFilesDialog::~BatchFilesDialog() = default;

DialogTemplate BatchFilesDialog::Layout() const {
    DialogTemplate layout(BatchWideText("IDS_BATCH_TITLE"), 440, 250);
    const std::wstring texts[] = {
        BatchWideText("IDS_ADDFILES"),    BatchWideText("IDS_BTN_REMOVE"),
        BatchWideText("IDS_BTN_MOVEUP"),  BatchWideText("IDS_BTN_MOVEDOWN"),
        BatchWideText("IDS_BTN_OPTIONS"), BatchWideText("IDS_BTN_START"),
        BatchWideText("IDS_BTN_CANCEL"),
    };
    constexpr DWORD kButton = WS_TABSTOP;
    const DialogControl controls[] = {
        {L"BUTTON", texts[0], kAddFilesButton, kButton, 7, 7, 60, 14},
        {L"BUTTON", texts[1], kRemoveButton, kButton, 71, 7, 50, 14},
        {L"BUTTON", texts[2], kMoveUpButton, kButton, 125, 7, 50, 14},
        {L"BUTTON", texts[3], kMoveDownButton, kButton, 179, 7, 50, 14},
        {L"STATIC", L"", kTotalFilesLabel, SS_RIGHT, 300, 10, 133, 10},
        {WC_LISTVIEWW, L"", kFileListView, WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS,
         7, 25, 426, 196},
        {L"BUTTON", texts[4], kOptionsButton, kButton, 7, 229, 70, 14},
        {L"STATIC", L"", kHintLabel, SS_LEFTNOWORDWRAP | SS_NOPREFIX, 83, 232, 232, 10},
        {L"BUTTON", texts[5], IDOK, BS_DEFPUSHBUTTON | kButton, 329, 229, 50, 14},
        {L"BUTTON", texts[6], IDCANCEL, kButton, 383, 229, 50, 14},
    };
    for (const DialogControl& control : controls)
        layout.Add(control);
    return layout;
}

void BatchFilesDialog::OnInit() {
    const HWND list = List();
    constexpr DWORD kListLook = LVS_EX_FULLROWSELECT | LVS_EX_SUBITEMIMAGES | LVS_EX_INFOTIP;
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, kListLook, kListLook);
    for (int column = 0; column < 5; ++column)
        AddListColumn(list, column, BatchWideText(kColumnKeys[column]), kColumnWidths[column]);
    images_ = ImageList_Create(GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON),
                               ILC_COLOR32 | ILC_MASK, 2, 4);
    SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images_));
    warningIcon_ =
        ImageList_AddIcon(images_, LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_WARNING)));
    // The shell's file drops arrive as messages; a drop target, where OLE runs on this thread,
    // takes those and a mail program's attachments too.
    DragAcceptFiles(Window(), TRUE);
    FileDropHandlers handlers{
        [this] { return adding_; },
        [this](const std::vector<std::wstring>& paths) { AddPaths(paths); },
        [this](const std::vector<DroppedAttachment>& attachments) { AddAttachments(attachments); },
    };
    dropTarget_ = ComPtr<IDropTarget>(
        new FileDropTarget(std::move(handlers), std::filesystem::path(SystemTempFolder())));
    dropRegistered_ = SUCCEEDED(RegisterDragDrop(Window(), dropTarget_.Get()));
    UpdateStates();
}

void BatchFilesDialog::AddPaths(const std::vector<std::wstring>& paths) {
    ReadSelection();
    std::vector<std::size_t> added;
    for (const std::wstring& path : paths)
        AddPath(path, added);
    CheckRows(added);
}

void BatchFilesDialog::AddAttachments(const std::vector<DroppedAttachment>& attachments) {
    ReadSelection();
    std::vector<std::size_t> added;
    for (const DroppedAttachment& attachment : attachments) {
        const std::size_t before = added.size();
        AddFile(attachment.file.wstring(), added);
        if (added.size() > before)
            rows_[added.back()].tip = attachment.name;
    }
    CheckRows(added);
}

void BatchFilesDialog::AddPath(const std::wstring& path, std::vector<std::size_t>& added) {
    const DWORD attributes =
        path.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        for (const std::wstring& file : FilesInFolder(FullLongPath(path)))
            AddFile(file, added);
        return;
    }
    AddFile(path, added);
}

void BatchFilesDialog::AddFile(const std::wstring& given, std::vector<std::size_t>& added) {
    const std::wstring path = FullLongPath(given);
    const FolderAndName parts = SplitPath(path);
    const bool listed = std::any_of(rows_.begin(), rows_.end(), [&](const BatchFileRow& row) {
        return row.texts[kNameColumn] == parts.name && row.texts[kFolderColumn] == parts.folder;
    });
    const std::optional<FileFacts> facts = FileFactsOf(path);
    if (listed || !facts)
        return;
    HostWide size(host_);
    host_.HostFormatFileSize(facts->size, size);
    std::wstring sizeText = size.Text();
    if (sizeText.empty()) {
        wchar_t own[64] = {};
        StrFormatByteSizeW(facts->size, own, 64);
        sizeText = own;
    }
    BatchFileRow row;
    row.path = path;
    row.texts[kNameColumn] = parts.name;
    row.texts[kFolderColumn] = parts.folder;
    row.texts[kSizeColumn] = sizeText;
    row.texts[kDateColumn] = facts->modified;
    row.fileSize = facts->size;
    added.push_back(rows_.size());
    rows_.push_back(std::move(row));
}

// Checks each new row in turn, showing how far it got; OK waits until all are done.
void BatchFilesDialog::CheckRows(const std::vector<std::size_t>& rows) {
    adding_ = true;
    ShowRows();
    const std::wstring checking = BatchWideText("IDS_STR_CHECKING");
    const std::wstring count = std::to_wstring(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        BatchFileRow& row = rows_[rows[i]];
        SetItemText(kHintLabel,
                    WithValues(checking, {std::to_wstring(i + 1), count, row.texts[kNameColumn]}));
        UpdateWindow(Item(kHintLabel));
        const FileCheck check = CheckBatchFile(host_, row.path);
        if (check.accepted()) {
            row.pageCount = check.pageCount;
        } else {
            row.errorKey = check.errorKey;
            row.texts[kErrorColumn] = BatchWideText(check.errorKey);
        }
    }
    SetItemText(kHintLabel, L"");
    adding_ = false;
    ShowRows();
}

// The shell's small icon for the file's type, once per lower-case extension.
int BatchFilesDialog::IconOf(const std::wstring& path) {
    const std::wstring extension = LowerExtensionOf(path);
    const auto known = iconByExtension_.find(extension);
    if (known != iconByExtension_.end())
        return known->second;
    SHFILEINFOW info{};
    const std::wstring sample = L"0" + extension;
    SHGetFileInfoW(sample.c_str(), FILE_ATTRIBUTE_NORMAL, &info, sizeof info,
                   SHGFI_ICON | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES);
    const OwnedIcon icon(info.hIcon);
    const int index = icon ? ImageList_AddIcon(images_, icon.get()) : -1;
    iconByExtension_.emplace(extension, index);
    return index;
}

void BatchFilesDialog::ReadSelection() {
    const HWND list = List();
    const int focused = static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, -1, LVNI_FOCUSED));
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        rows_[row].selected = IsListRowSelected(list, static_cast<int>(row));
        rows_[row].focused = static_cast<int>(row) == focused;
    }
}

// The list shows the rows as they are held, with their selection.
void BatchFilesDialog::ShowRows() {
    const HWND list = List();
    showing_ = true;
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    for (std::size_t at = 0; at < rows_.size(); ++at) {
        const BatchFileRow& row = rows_[at];
        const int index =
            InsertListRow(list, static_cast<int>(at), row.texts[kNameColumn], IconOf(row.path));
        for (int column = kFolderColumn; column <= kErrorColumn; ++column) {
            const bool warned = column == kErrorColumn && !row.errorKey.empty();
            SetListText(list, index, column, row.texts[column], warned ? warningIcon_ : -1);
        }
        const UINT state = (row.selected ? LVIS_SELECTED : 0) | (row.focused ? LVIS_FOCUSED : 0);
        SetListRowState(list, index, LVIS_SELECTED | LVIS_FOCUSED, state);
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
    showing_ = false;
    UpdateStates();
}

bool BatchFilesDialog::OnCommand(int id, int) {
    switch (id) {
        case kAddFilesButton:
            ShowAddMenu();
            return true;
        case kAddFilesCommand:
            ChooseFiles();
            return true;
        case kAddFolderCommand:
            ChooseFolder();
            return true;
        case kAddOpenFilesCommand:
            ChooseOpenDocuments();
            return true;
        case kRemoveButton:
            RemoveSelected();
            return true;
        case kMoveUpButton:
            MoveCurrent(-1);
            return true;
        case kMoveDownButton:
            MoveCurrent(1);
            return true;
        case kOptionsButton:
            ShowOptions();
            return true;
        case IDOK:
            Accept();
            return true;
        default:
            return false;
    }
}

void BatchFilesDialog::OnNotify(const NMHDR& header) {
    if (header.idFrom != kFileListView)
        return;
    switch (header.code) {
        case LVN_ITEMCHANGED:
            if (!showing_)
                UpdateStates();
            break;
        case LVN_COLUMNCLICK:
            SortBy(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem);
            break;
        case LVN_KEYDOWN:
            if (reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_DELETE)
                RemoveSelected();
            break;
        case LVN_GETINFOTIPW: {
            auto& tip =
                const_cast<NMLVGETINFOTIPW&>(reinterpret_cast<const NMLVGETINFOTIPW&>(header));
            if (tip.iItem < 0 || static_cast<std::size_t>(tip.iItem) >= rows_.size())
                break;
            const BatchFileRow& row = rows_[static_cast<std::size_t>(tip.iItem)];
            const std::wstring& text = row.tip.empty() ? row.texts[kErrorColumn] : row.tip;
            if (tip.cchTextMax > 0)
                lstrcpynW(tip.pszText, text.c_str(), tip.cchTextMax);
            break;
        }
        default:
            break;
    }
}

// Dropped files are added as the add-files entry adds them; nothing while rows are checked. The
// drop target is given back before the window goes.
INT_PTR BatchFilesDialog::OnMessage(UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_DESTROY && dropRegistered_) {
        RevokeDragDrop(Window());
        dropRegistered_ = false;
    }
    if (message != WM_DROPFILES)
        return 0;
    const auto drop = reinterpret_cast<HDROP>(wParam);
    std::vector<std::wstring> paths;
    const UINT count = adding_ ? 0 : DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(std::move(path));
    }
    DragFinish(drop);
    if (!paths.empty())
        AddPaths(paths);
    return TRUE;
}

void BatchFilesDialog::ShowAddMenu() {
    const OwnedMenu menu(CreatePopupMenu());
    const std::pair<int, const char*> entries[] = {
        {kAddFilesCommand, "IDS_ADDFILES_ADDFILES"},
        {kAddFolderCommand, "IDS_ADDFILES_ADDFOLDER"},
        {kAddOpenFilesCommand, "IDS_ADDFILES_ADDOPENFILES"},
    };
    for (const auto& [command, key] : entries)
        AppendMenuW(menu.get(), MF_STRING, command, BatchWideText(key).c_str());
    RECT button{};
    GetWindowRect(Item(kAddFilesButton), &button);
    const int chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN,
                                      button.left, button.bottom, 0, Window(), nullptr);
    if (chosen != 0)
        OnCommand(chosen, 0);
}

void BatchFilesDialog::ChooseFiles() {
    FileDialogSettings settings;
    settings.filter = BatchWideText("IDS_SUPPORTED_FILES") + L"|*.pdf;*.ppdf||";
    settings.flags = kSeveralExistingFiles;
    settings.parent = reinterpret_cast<HostWindow>(Window());
    WinFileDialog dialog(settings);
    if (dialog.Run())
        AddPaths(dialog.Paths());
}

void BatchFilesDialog::ChooseFolder() {
    const auto folder = BrowseForFolder(Window(), BatchWideText("IDS_ADDFILES_ADDFOLDER"));
    if (folder)
        AddPaths({*folder});
}

void BatchFilesDialog::ChooseOpenDocuments() {
    OpenDocumentsDialog dialog(host_);
    if (dialog.RunModal(Window()) == IDOK)
        AddPaths(dialog.ChosenPaths());
}

void BatchFilesDialog::ShowOptions() {
    OutputOptionDialog dialog(host_, options_);
    if (dialog.RunModal(Window()) == IDOK)
        options_ = dialog.Record();
}

void BatchFilesDialog::RemoveSelected() {
    if (adding_)
        return;
    ReadSelection();
    std::erase_if(rows_, [](const BatchFileRow& row) { return row.selected; });
    ShowRows();
}

void BatchFilesDialog::MoveCurrent(int step) {
    if (adding_)
        return;
    ReadSelection();
    const auto current = std::find_if(rows_.begin(), rows_.end(),
                                      [](const BatchFileRow& row) { return row.focused; });
    if (current == rows_.end())
        return;
    const auto row = current - rows_.begin();
    const auto target = row + step;
    if (target < 0 || target >= static_cast<std::ptrdiff_t>(rows_.size()))
        return;
    std::swap(rows_[static_cast<std::size_t>(row)], rows_[static_cast<std::size_t>(target)]);
    ShowRows();
}

// A click on a header sorts by its column; a second click on the same one reverses the order.
void BatchFilesDialog::SortBy(int column) {
    if (adding_ || column < kNameColumn || column > kErrorColumn)
        return;
    ReadSelection();
    sortAscending_ = column == sortColumn_ ? !sortAscending_ : true;
    sortColumn_ = column;
    const auto order = static_cast<FileListColumn>(column);
    std::stable_sort(rows_.begin(), rows_.end(), [&](const BatchFileRow& a, const BatchFileRow& b) {
        const std::wstring& left = a.texts[column];
        const std::wstring& right = b.texts[column];
        return sortAscending_ ? SortsBefore(order, left, right) : SortsBefore(order, right, left);
    });
    ShowRows();
    ShowSortArrow();
}

void BatchFilesDialog::ShowSortArrow() const {
    const auto header = reinterpret_cast<HWND>(SendMessageW(List(), LVM_GETHEADER, 0, 0));
    for (int column = kNameColumn; column <= kErrorColumn; ++column) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, column, reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (column == sortColumn_)
            item.fmt |= sortAscending_ ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageW(header, HDM_SETITEMW, column, reinterpret_cast<LPARAM>(&item));
    }
}

void BatchFilesDialog::UpdateStates() {
    const std::size_t count = rows_.size();
    SetItemText(kTotalFilesLabel,
                WithValues(BatchWideText("IDS_STR_TOTALFILES"), {std::to_wstring(count)}));
    EnableItem(IDOK, count > 0 && !adding_);
    const bool selected = !SelectedListRows(List()).empty();
    for (const int button : {kRemoveButton, kMoveUpButton, kMoveDownButton})
        EnableItem(button, selected && !adding_);
}

// Reads the accepted rows and ends unless existing files would be overwritten and the user
// doesn't want that.
void BatchFilesDialog::Accept() {
    if (adding_ || rows_.empty())
        return;
    read_ = true;
    files_.clear();
    totalPages_ = 0;
    for (const BatchFileRow& row : rows_) {
        if (!row.pageCount)
            continue;
        files_.push_back({row.path, row.fileSize, *row.pageCount});
        totalPages_ += *row.pageCount;
    }
    const std::vector<std::wstring> existing =
        TargetsToOverwrite(files_, options_, FileExistsOnDisk);
    if (!existing.empty()) {
        OverwriteListDialog overwrite(existing);
        if (overwrite.RunModal(Window()) != IDOK)
            return;
    }
    End(IDOK);
}

std::optional<BatchChoice> ChooseBatchFilesWithDialog(HostApi& host, HWND parent) {
    BatchFilesDialog dialog(host);
    if (dialog.RunModal(parent) != IDOK)
        return std::nullopt;
    return dialog.Choice();
}
