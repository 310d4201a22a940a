// The base of the batch's dialogs: a dialog made from an in-memory layout whose messages reach
// the object. It runs modally, or is created modeless for a caller that drives it with messages;
// either way End gives its result.
#pragma once

#include <windows.h>

#include <string>

#include "dialog_template.h"

class WinDialog {
  public:
    WinDialog() = default;
    virtual ~WinDialog();
    WinDialog(const WinDialog&) = delete;
    WinDialog& operator=(const WinDialog&) = delete;

    // Shows the dialog over `parent` and returns the code it ended with; -1 when it couldn't be
    // shown.
    INT_PTR RunModal(HWND parent);
    // Makes the dialog without showing it and returns at once; its window lives as long as the
    // object, and End hides it.
    HWND Create(HWND parent);

    HWND Window() const { return window_; }
    HWND Item(int id) const { return GetDlgItem(window_, id); }
    // Whether End was called, and with which code.
    bool Ended() const { return ended_; }
    INT_PTR Result() const { return result_; }

  protected:
    virtual DialogTemplate Layout() const = 0;
    virtual void OnInit() {}
    // A button's or control's command; false lets the default handling run (OK and Cancel end
    // the dialog with their own codes).
    virtual bool OnCommand(int /*id*/, int /*code*/) { return false; }
    virtual void OnNotify(const NMHDR& /*header*/) {}
    // Any other message: what the dialog procedure answers, 0 when it wasn't handled.
    virtual INT_PTR OnMessage(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) { return 0; }

    void End(INT_PTR code);
    std::wstring ItemText(int id) const;
    void SetItemText(int id, const std::wstring& text) const;
    void EnableItem(int id, bool enabled) const;
    bool IsChecked(int id) const;
    void SetChecked(int id, bool checked) const;

  private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Handle(UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    bool modal_ = false;
    bool ended_ = false;
    INT_PTR result_ = 0;
};
