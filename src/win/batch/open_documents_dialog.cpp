#include "open_documents_dialog.h"

#include "batch/open_documents.h"
#include "batch_control_ids.h"
#include "batch_wide_texts.h"
#include "file_row_facts.h"
#include "host/host_string.h"
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
    const HWND list = Item(kOpenFilesList);
    std::vector<ChosenDocument> chosen;
    for (const int row : SelectedListRows(list))
        chosen.push_back({docs_[static_cast<std::size_t>(row)], ListText(list, row, 0)});
    chosen_ = FilesOfChosenDocuments(host_, chosen, BatchWideText("IDS_NEEDSAVE_MSG"),
                                     BatchWideText("IDS_OPENFILES_TITLE"),
                                     reinterpret_cast<HostWindow>(Window()));
    End(IDOK);
}
