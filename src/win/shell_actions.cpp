#include "shell_actions.h"

#include <windows.h>
// after windows.h, which it needs
#include <shellapi.h>

namespace {

// ShellExecuteW answers a value above this on success.
constexpr INT_PTR kShellSuccessAbove = 32;

}  // namespace

bool OpenWithShell(const std::wstring& url) {
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"open", url.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > kShellSuccessAbove;
}

void SendCommandMessage(HostWindow window, unsigned command) {
    if (window == nullptr)
        return;
    SendMessageW(reinterpret_cast<HWND>(window), WM_COMMAND, command, 0);
}
