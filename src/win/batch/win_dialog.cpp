#include "win_dialog.h"

#include "common_controls_context.h"

WinDialog::~WinDialog() {
    if (!modal_ && window_ != nullptr)
        DestroyWindow(window_);
}

INT_PTR WinDialog::RunModal(HWND parent) {
    modal_ = true;
    ended_ = false;
    const CommonControlsContext controls;
    const DialogTemplate layout = Layout();
    const INT_PTR code =
        DialogBoxIndirectParamW(GetModuleHandleW(nullptr), layout.Get(), parent,
                                &WinDialog::Procedure, reinterpret_cast<LPARAM>(this));
    window_ = nullptr;
    return code;
}

HWND WinDialog::Create(HWND parent) {
    modal_ = false;
    ended_ = false;
    const CommonControlsContext controls;
    const DialogTemplate layout = Layout();
    return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), layout.Get(), parent,
                                      &WinDialog::Procedure, reinterpret_cast<LPARAM>(this));
}

void WinDialog::End(INT_PTR code) {
    ended_ = true;
    result_ = code;
    if (modal_)
        EndDialog(window_, code);
    else
        ShowWindow(window_, SW_HIDE);
}

std::wstring WinDialog::ItemText(int id) const {
    const HWND item = Item(id);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(item, text.data(), text.size())));
    return text;
}

void WinDialog::SetItemText(int id, const std::wstring& text) const {
    SetDlgItemTextW(window_, id, text.c_str());
}

void WinDialog::EnableItem(int id, bool enabled) const {
    EnableWindow(Item(id), enabled ? TRUE : FALSE);
}

bool WinDialog::IsChecked(int id) const {
    return IsDlgButtonChecked(window_, id) == BST_CHECKED;
}

void WinDialog::SetChecked(int id, bool checked) const {
    CheckDlgButton(window_, id, checked ? BST_CHECKED : BST_UNCHECKED);
}

INT_PTR CALLBACK WinDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        auto* dialog = reinterpret_cast<WinDialog*>(lParam);
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        dialog->window_ = window;
    }
    auto* dialog = reinterpret_cast<WinDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    return dialog != nullptr ? dialog->Handle(message, wParam, lParam) : FALSE;
}

INT_PTR WinDialog::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit();
            return TRUE;
        case WM_COMMAND:
            if (OnCommand(LOWORD(wParam), HIWORD(wParam)))
                return TRUE;
            if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
                End(LOWORD(wParam));
                return TRUE;
            }
            return FALSE;
        case WM_NOTIFY:
            OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
            return FALSE;
        case WM_NCDESTROY:
            SetWindowLongPtrW(window_, DWLP_USER, 0);
            window_ = nullptr;
            return FALSE;
        default:
            return OnMessage(message, wParam, lParam);
    }
}
