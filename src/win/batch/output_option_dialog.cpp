#include "output_option_dialog.h"

#include "batch_control_ids.h"
#include "batch_wide_texts.h"
#include "folder_browser.h"
#include "host/host_api.h"
#include "host/message_box_style.h"

namespace {

constexpr DWORD kOptionRadioFirst = BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP;
constexpr DWORD kOptionRadio = BS_AUTORADIOBUTTON;
constexpr DWORD kOptionEdit = WS_BORDER | ES_AUTOHSCROLL | WS_TABSTOP;

}  // namespace

OutputOptionDialog::OutputOptionDialog(HostApi& host, const OutputOptions& options)
    : host_(host), record_(options) {}

DialogTemplate OutputOptionDialog::Layout() const {
    DialogTemplate layout(BatchWideText("IDS_OUTPUTOPTIONS_TITLE"), 280, 184);
    const std::wstring texts[] = {
        BatchWideText("IDS_STR_LOCATION"),      BatchWideText("IDS_RADIO_SAMEFOLDER"),
        BatchWideText("IDS_RADIO_SPECIFIC"),    BatchWideText("IDS_BUTTON_BROWSER"),
        BatchWideText("IDS_STR_NAMING"),        BatchWideText("IDS_RADIO_KEEP"),
        BatchWideText("IDS_RADIO_ADDFILENAME"), BatchWideText("IDS_STR_BEFORE"),
        BatchWideText("IDS_STR_AFTER"),         BatchWideText("IDS_CHECK_OVERWRITE"),
    };
    const DialogControl controls[] = {
        {L"BUTTON", texts[0], kLocationGroup, BS_GROUPBOX, 7, 7, 266, 52},
        {L"BUTTON", texts[1], kSameFolderRadio, kOptionRadioFirst, 14, 19, 250, 10},
        {L"BUTTON", texts[2], kSpecificRadio, kOptionRadio, 14, 37, 70, 10},
        {L"EDIT", L"", kFolderEdit, kOptionEdit | WS_GROUP, 86, 35, 128, 14},
        {L"BUTTON", texts[3], kBrowseButton, WS_TABSTOP, 218, 35, 50, 14},
        {L"BUTTON", texts[4], kNamingGroup, BS_GROUPBOX, 7, 64, 266, 76},
        {L"BUTTON", texts[5], kKeepRadio, kOptionRadioFirst, 14, 76, 250, 10},
        {L"BUTTON", texts[6], kAddToNameRadio, kOptionRadio, 14, 90, 250, 10},
        {L"STATIC", texts[7], kBeforeLabel, 0, 28, 106, 50, 10},
        {L"EDIT", L"", kBeforeEdit, kOptionEdit | WS_GROUP, 80, 104, 120, 14},
        {L"STATIC", texts[8], kAfterLabel, 0, 28, 122, 50, 10},
        {L"EDIT", L"", kAfterEdit, kOptionEdit, 80, 120, 120, 14},
        {L"BUTTON", texts[9], kOverwriteCheck, BS_AUTOCHECKBOX | WS_TABSTOP, 7, 146, 266, 10},
        {L"BUTTON", L"OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 169, 164, 50, 14},
        {L"BUTTON", L"Cancel", IDCANCEL, WS_TABSTOP, 223, 164, 50, 14},
    };
    for (const DialogControl& control : controls)
        layout.Add(control);
    return layout;
}

// The controls show the record before any rule applies.
void OutputOptionDialog::OnInit() {
    const OutputOptionControls start = ControlsOf(record_);
    SetChecked(start.specific ? kSpecificRadio : kSameFolderRadio, true);
    SetItemText(kFolderEdit, start.folder);
    SetChecked(start.keep ? kKeepRadio : kAddToNameRadio, true);
    SetItemText(kBeforeEdit, FileNameCharactersOf(start.before));
    SetItemText(kAfterEdit, FileNameCharactersOf(start.after));
    SetChecked(kOverwriteCheck, start.overwrite);
    UpdateStates();
}

OutputOptionControls OutputOptionDialog::Controls() const {
    OutputOptionControls state;
    state.specific = IsChecked(kSpecificRadio);
    state.folder = ItemText(kFolderEdit);
    state.keep = IsChecked(kKeepRadio);
    state.before = ItemText(kBeforeEdit);
    state.after = ItemText(kAfterEdit);
    state.overwrite = IsChecked(kOverwriteCheck);
    return state;
}

bool OutputOptionDialog::OnCommand(int id, int code) {
    switch (id) {
        case kSameFolderRadio:
        case kSpecificRadio:
        case kKeepRadio:
        case kAddToNameRadio:
            UpdateStates();
            return code == BN_CLICKED;
        case kFolderEdit:
            if (code == EN_CHANGE)
                UpdateStates();
            return true;
        case kBeforeEdit:
        case kAfterEdit:
            if (code == EN_CHANGE)
                DropRefusedCharacters(id);
            return true;
        case kBrowseButton:
            ChooseFolder();
            return true;
        case kOverwriteCheck:
            OnOverwriteClicked();
            return true;
        case IDOK:
            Accept();
            return true;
        default:
            return false;
    }
}

void OutputOptionDialog::UpdateStates() const {
    const OutputOptionControls state = Controls();
    EnableItem(kFolderEdit, state.specific);
    EnableItem(kBrowseButton, state.specific);
    EnableItem(kBeforeEdit, !state.keep);
    EnableItem(kAfterEdit, !state.keep);
    EnableItem(IDOK, OkEnabled(state));
}

// A typed or pasted character a file name can't hold is taken out again, the caret kept where
// the user was.
void OutputOptionDialog::DropRefusedCharacters(int edit) const {
    const std::wstring text = ItemText(edit);
    const std::wstring kept = FileNameCharactersOf(text);
    if (kept == text)
        return;
    DWORD caret = 0;
    SendMessageW(Item(edit), EM_GETSEL, 0, reinterpret_cast<LPARAM>(&caret));
    const DWORD removed = static_cast<DWORD>(text.size() - kept.size());
    SetItemText(edit, kept);
    caret = caret > removed ? caret - removed : 0;
    SendMessageW(Item(edit), EM_SETSEL, caret, caret);
}

void OutputOptionDialog::ChooseFolder() const {
    const auto folder = BrowseForFolder(Window(), BatchWideText("IDS_HELPER_TITLE"));
    if (folder)
        SetItemText(kFolderEdit, *folder + L"\\");
}

// Results that could only fall on their sources keep the overwrite box checked.
void OutputOptionDialog::OnOverwriteClicked() const {
    if (IsChecked(kOverwriteCheck) || WouldDiffer(Controls()))
        return;
    const std::wstring text = BatchWideText("IDS_GW_MUSTOVERWRITING");
    const std::wstring title = BatchWideText("IDS_OUTPUTOPTIONS_TITLE");
    host_.HostMessageBox(text.c_str(), message_box::kWarning, title.c_str(), nullptr,
                         reinterpret_cast<HostWindow>(Window()));
    SetChecked(kOverwriteCheck, true);
}

void OutputOptionDialog::Accept() {
    const OutputOptionControls state = Controls();
    const std::string_view failed = FailedOkCheck(state);
    if (!failed.empty()) {
        const std::wstring text = BatchWideText(failed);
        host_.HostMessageShow(text.c_str(), 0, 0, L"", 0, 0);
        return;
    }
    record_ = WriteBack(state, record_);
    End(IDOK);
}
