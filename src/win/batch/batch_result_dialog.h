// How a batch run ended: a success or failure picture, the run's message, and the files it could
// not process. Without failed files the list is hidden and the dialog is 100 pixels shorter. A
// link, shown when the run gives it a target, opens the target and ends the dialog.
#pragma once

#include <functional>
#include <string>

#include "batch/batch_choice.h"
#include "win_dialog.h"

using OpenTarget = std::function<bool(const std::wstring& target)>;

class BatchResultDialog final : public WinDialog {
  public:
    static constexpr int kListHeight = 100;  // pixels

    // `open` opens the link's target; the shell's "open" by default.
    explicit BatchResultDialog(BatchOutcome outcome, OpenTarget open = nullptr);
    ~BatchResultDialog() override;

    // The link's text and target, before the dialog is made.
    void SetLink(std::wstring text, std::wstring target);

  protected:
    DialogTemplate Layout() const override;
    void OnInit() override;
    bool OnCommand(int id, int code) override;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    void ShowLink();
    void MoveUp(int id, int pixels) const;

    BatchOutcome outcome_;
    OpenTarget open_;
    std::wstring linkText_;
    std::wstring linkTarget_;
    HFONT linkFont_ = nullptr;
};

// Runs the result dialog over `parent`; 1 once the user ends it.
int ShowBatchResultDialog(HWND parent, const BatchOutcome& outcome);
