#include "open_documents_dialog.h"

#include "batch_control_ids.h"
#include "batch_wide_texts.h"
#include "file_row_facts.h"
#include "host/host_string.h"
#include "host/message_box_style.h"
#include "list_view_rows.h"

DialogTemplate OpenDocumentsDialog::Layout() const {
    DialogTemplate layout(BatchWideText("IDS_OPENFILES_TITLE"), 320, 180);
    const std::wstring add = BatchWideText("IDS_BTN_ADDFILES");
    const std::wstring cancel = BatchWideText("IDS_BTN_CANCEL");
    const DialogControl controls[] = {
        {WC_LISTVIEWW, L"", kOpenFilesList, WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS,
         7, 7, 306, 145},
        {L"BUTTON", add, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 209, 159, 50, 14},
        {L"BUTTON", cancel, IDCANCEL, WS_TABSTOP, 263, 159, 50, 14},
    };
    for (const DialogControl& control : controls)
        layout.Add(control);
    return layout;
}

void OpenDocumentsDialog::OnInit() {
    const HWND list = Item(kOpenFilesList);
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    AddListColumn(list, 0, BatchWideText("IDS_STR_NAME"), 330);
    AddListColumn(list, 1, BatchWideText("IDS_STR_FILEMODIFYDATE"), 130);
    const int count = host_.HostAppGetDocCount();
    for (int index = 0; index < count; ++index) {
        HostDoc doc = host_.HostAppGetDocByIndex(index);
        if (doc == nullptr)
            continue;
        HostWide path(host_);
        host_.HostDocGetFilePath(doc, path);
        const int row = InsertListRow(list, static_cast<int>(docs_.size()), path.Text());
        const std::optional<FileFacts> facts = FileFactsOf(path.Text());
        SetListText(list, row, 1, facts ? facts->modified : L"");
        SetListRowState(list, row, LVIS_SELECTED, LVIS_SELECTED);
        docs_.push_back(doc);
    }
}

bool OpenDocumentsDialog::OnCommand(int id, int) {
    if (id != IDOK)
        return false;
    Accept();
    return true;
}

void OpenDocumentsDialog::Accept() {
    chosen_.clear();
    bool announced = false;
    const HWND list = Item(kOpenFilesList);
    for (const int row : SelectedListRows(list)) {
        const HostDoc doc = docs_[static_cast<std::size_t>(row)];
        if (host_.HostDocIsTemporary(doc) == 0 && host_.HostDocIsModified(doc) == 0) {
            chosen_.push_back(ListText(list, row, 0));
            continue;
        }
        if (!announced) {
            const std::wstring text = BatchWideText("IDS_NEEDSAVE_MSG");
            const std::wstring title = BatchWideText("IDS_OPENFILES_TITLE");
            host_.HostMessageBox(text.c_str(), message_box::kWarning, title.c_str(), nullptr,
                                 reinterpret_cast<HostWindow>(Window()));
            announced = true;
        }
        // The host's save; a temporary document gets its file there, so the path is read after.
        if (host_.HostDocSave(doc, 0, 0, 1, 0) == 0)
            continue;
        HostWide path(host_);
        host_.HostDocGetFilePath(doc, path);
        if (!path.Text().empty())
            chosen_.push_back(path.Text());
    }
    End(IDOK);
}
