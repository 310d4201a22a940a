#include "open_documents_dialog.h"

#include "batch_control_ids.h"
#include "batch_wide_texts.h"
#include "file_row_facts.h"
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
    for (const OpenDocument& document : OpenDocuments(host_)) {
        const int row = InsertListRow(list, static_cast<int>(docs_.size()), document.path);
        const std::optional<FileFacts> facts = FileFactsOf(document.path);
        SetListText(list, row, 1, facts ? facts->modified : L"");
        SetListRowState(list, row, LVIS_SELECTED, LVIS_SELECTED);
        docs_.push_back(document);
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
    std::vector<OpenDocument> chosen;
    for (const int row : SelectedListRows(list))
        chosen.push_back(docs_[static_cast<std::size_t>(row)]);
    chosen_ = FilesOfChosenDocuments(host_, chosen, BatchWideText("IDS_NEEDSAVE_MSG"),
                                     BatchWideText("IDS_OPENFILES_TITLE"),
                                     reinterpret_cast<HostWindow>(Window()));
    End(IDOK);
}
