#include "batch_result_dialog.h"

#include "batch_control_ids.h"
#include "batch_wide_texts.h"
#include "list_box_extent.h"
#include "shell_actions.h"

namespace {

constexpr COLORREF kLinkColour = RGB(0, 102, 204);

}  // namespace

BatchResultDialog::BatchResultDialog(BatchOutcome outcome, OpenTarget open)
    : outcome_(std::move(outcome)), open_(open ? std::move(open) : OpenTarget(OpenWithShell)) {}

BatchResultDialog::~BatchResultDialog() {
    if (linkFont_ != nullptr)
        DeleteObject(linkFont_);
}

void BatchResultDialog::SetLink(std::wstring text, std::wstring target) {
    linkText_ = std::move(text);
    linkTarget_ = std::move(target);
}

DialogTemplate BatchResultDialog::Layout() const {
    DialogTemplate layout(L"Batch Redaction", 300, 172);
    const std::wstring caption = BatchWideText("IDS_RESULT_FAILEDFILES");
    const DialogControl controls[] = {
        {L"STATIC", L"", kResultPicture, SS_ICON, 7, 7, 21, 20},
        {L"STATIC", outcome_.message, kResultMessage, SS_NOPREFIX, 36, 7, 257, 40},
        {L"STATIC", caption, kFailedCaption, 0, 7, 52, 286, 10},
        {L"LISTBOX", L"", kFailedList,
         WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOINTEGRALHEIGHT | WS_TABSTOP, 7, 64, 286, 72},
        {L"STATIC", linkText_, kResultLink, SS_NOTIFY | SS_NOPREFIX, 7, 140, 220, 10},
        {L"BUTTON", L"OK", IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, 243, 151, 50, 14},
    };
    for (const DialogControl& control : controls)
        layout.Add(control);
    return layout;
}

void BatchResultDialog::OnInit() {
    const HICON picture = LoadIconW(
        nullptr, reinterpret_cast<LPCWSTR>(outcome_.ret == 0 ? IDI_INFORMATION : IDI_WARNING));
    SendMessageW(Item(kResultPicture), STM_SETICON, reinterpret_cast<WPARAM>(picture), 0);
    ShowLink();
    if (!outcome_.failedFiles.empty()) {
        FillListBox(Item(kFailedList), outcome_.failedFiles);
        return;
    }
    ShowWindow(Item(kFailedCaption), SW_HIDE);
    ShowWindow(Item(kFailedList), SW_HIDE);
    RECT frame{};
    GetWindowRect(Window(), &frame);
    SetWindowPos(Window(), nullptr, 0, 0, frame.right - frame.left,
                 frame.bottom - frame.top - kListHeight,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    MoveUp(IDOK, kListHeight);
    MoveUp(kResultLink, kListHeight);
}

// The link in its own look: underlined, in the link colour; hidden without a target.
void BatchResultDialog::ShowLink() {
    const HWND link = Item(kResultLink);
    if (linkTarget_.empty()) {
        ShowWindow(link, SW_HIDE);
        return;
    }
    LOGFONTW look{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(link, WM_GETFONT, 0, 0)), sizeof look, &look);
    look.lfUnderline = TRUE;
    linkFont_ = CreateFontIndirectW(&look);
    SendMessageW(link, WM_SETFONT, reinterpret_cast<WPARAM>(linkFont_), FALSE);
}

void BatchResultDialog::MoveUp(int id, int pixels) const {
    const HWND item = Item(id);
    RECT place{};
    GetWindowRect(item, &place);
    MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&place), 2);
    SetWindowPos(item, nullptr, place.left, place.top - pixels, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool BatchResultDialog::OnCommand(int id, int code) {
    if (id != kResultLink || code != STN_CLICKED || linkTarget_.empty())
        return false;
    open_(linkTarget_);
    End(IDOK);
    return true;
}

// The link takes the hand cursor and its colour.
INT_PTR BatchResultDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND link = Item(kResultLink);
    if (message == WM_SETCURSOR && reinterpret_cast<HWND>(wParam) == link) {
        SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND)));
        SetWindowLongPtrW(Window(), DWLP_MSGRESULT, TRUE);
        return TRUE;
    }
    if (message != WM_CTLCOLORSTATIC || reinterpret_cast<HWND>(lParam) != link)
        return 0;
    const auto context = reinterpret_cast<HDC>(wParam);
    SetTextColor(context, kLinkColour);
    SetBkMode(context, TRANSPARENT);
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_BTNFACE));
}

int ShowBatchResultDialog(HWND parent, const BatchOutcome& outcome) {
    BatchResultDialog dialog(outcome);
    return dialog.RunModal(parent) == IDOK ? 1 : 0;
}
