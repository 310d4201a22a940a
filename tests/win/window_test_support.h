// Helpers of the tests that drive windows: the message queue emptied, and an answer given to a
// modal dialog from inside its own loop.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// Dispatches the messages waiting in this thread's queue.
void PumpMessages();

// A top-level window of 400 by 300 pixels, never shown, to own the windows under test.
HWND MakeParentWindow();

// Runs `answer` on the top-level window titled `title` once it is up, from this thread's timer
// inside the modal loop that shows it; the answer ends the dialog. Answered() tells whether it
// ran.
class ModalAnswer {
  public:
    ModalAnswer(std::wstring title, std::function<void(HWND dialog)> answer);
    ~ModalAnswer();
    ModalAnswer(const ModalAnswer&) = delete;
    ModalAnswer& operator=(const ModalAnswer&) = delete;

    bool Answered() const { return answered_; }

  private:
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);

    std::wstring title_;
    std::function<void(HWND)> answer_;
    UINT_PTR timer_ = 0;
    bool answered_ = false;
};

// The memory of a drop of `paths` as the shell hands it to a window that accepts files; the
// receiver frees it.
HGLOBAL FileDropOf(const std::vector<std::wstring>& paths);

// Presses a button, radio button or check box of a dialog as a user would: it changes its state
// and the dialog hears its command; a disabled one does nothing.
void ClickButton(HWND dialog, int id);
