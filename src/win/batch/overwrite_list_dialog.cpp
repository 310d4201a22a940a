#include "overwrite_list_dialog.h"

#include "batch_control_ids.h"
#include "batch_wide_texts.h"
#include "list_box_extent.h"

DialogTemplate OverwriteListDialog::Layout() const {
    DialogTemplate layout(BatchWideText("IDS_FILE_OVERWRITE"), 320, 190);
    const std::wstring note = BatchWideText("IDS_STR_SAVEWARNNING");
    const std::wstring goOn = BatchWideText("IDS_BTN_CONTINUE");
    const std::wstring cancel = BatchWideText("IDS_BTN_CANCEL");
    const DialogControl controls[] = {
        {L"STATIC", note, kOverwriteNote, 0, 7, 7, 306, 20},
        {L"LISTBOX", L"", kOverwriteFileList,
         WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOINTEGRALHEIGHT | WS_TABSTOP, 7, 30, 306, 132},
        {L"BUTTON", goOn, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 209, 169, 50, 14},
        {L"BUTTON", cancel, IDCANCEL, WS_TABSTOP, 263, 169, 50, 14},
    };
    for (const DialogControl& control : controls)
        layout.Add(control);
    return layout;
}

void OverwriteListDialog::OnInit() {
    FillListBox(Item(kOverwriteFileList), files_);
}
