#include "window_test_support.h"

// after windows.h, which it needs
#include <shlobj.h>

#include <algorithm>

namespace {

// The one answer waiting; the tests run on one thread and wait for one dialog at a time.
ModalAnswer* waiting = nullptr;
constexpr UINT kTickMs = 10;

}  // namespace

void PumpMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

HWND MakeParentWindow() {
    return CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, nullptr, nullptr,
                           nullptr, nullptr);
}

ModalAnswer::ModalAnswer(std::wstring title, std::function<void(HWND dialog)> answer)
    : title_(std::move(title)), answer_(std::move(answer)) {
    waiting = this;
    timer_ = SetTimer(nullptr, 0, kTickMs, &ModalAnswer::Tick);
}

ModalAnswer::~ModalAnswer() {
    KillTimer(nullptr, timer_);
    waiting = nullptr;
}

void CALLBACK ModalAnswer::Tick(HWND, UINT, UINT_PTR, DWORD) {
    if (waiting == nullptr || waiting->answered_)
        return;
    const HWND dialog = FindWindowW(nullptr, waiting->title_.c_str());
    if (dialog == nullptr || !IsWindowEnabled(dialog))
        return;
    waiting->answered_ = true;
    KillTimer(nullptr, waiting->timer_);
    waiting->answer_(dialog);
}

void ClickButton(HWND dialog, int id) {
    SendMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

HGLOBAL FileDropOf(const std::vector<std::wstring>& paths) {
    std::wstring names;
    for (const std::wstring& path : paths)
        names += path + L'\0';
    names += L'\0';
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + names.size() * sizeof(wchar_t));
    auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    std::copy(names.begin(), names.end(), reinterpret_cast<wchar_t*>(drop + 1));
    GlobalUnlock(memory);
    return memory;
}
