#include "task_dialogs.h"

// after windows.h (through the header), which it needs
#include <commctrl.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/dialog_text_table.h"
#include "util/utf.h"

namespace {

constexpr int kSignIn = 0;
constexpr int kSignUp = 1;
constexpr int kNotNow = 2;
constexpr int kGoOn = 3;
constexpr int kFirstButton = 100;

std::wstring Text(std::string_view key) {
    return FromUtf8(DialogTextOf(key));
}

using TaskDialogIndirectFn = HRESULT(WINAPI*)(const TASKDIALOGCONFIG*, int*, int*, BOOL*);

// The system's task dialog, present with version 6 of the common controls; null before that.
TaskDialogIndirectFn TaskDialogEntry() {
    HMODULE controls = GetModuleHandleW(L"comctl32.dll");
    if (controls == nullptr)
        controls = LoadLibraryW(L"comctl32.dll");
    if (controls == nullptr)
        return nullptr;
    return reinterpret_cast<TaskDialogIndirectFn>(
        reinterpret_cast<void*>(GetProcAddress(controls, "TaskDialogIndirect")));
}

// Shows a task dialog with `buttons`, numbered from kFirstButton; the index of the one pressed,
// -1 when the dialog was closed or couldn't be shown.
int ShowChoice(HWND parent, const std::wstring& title, const std::wstring& heading,
               const std::wstring& content, const std::vector<std::wstring>& buttons) {
    const TaskDialogIndirectFn show = TaskDialogEntry();
    if (show == nullptr) {
        // Without task dialogs the first button is offered alone.
        const int answer =
            MessageBoxW(parent, (heading + L"\n\n" + content).c_str(), title.c_str(), MB_OKCANCEL);
        return answer == IDOK ? 0 : -1;
    }
    std::vector<TASKDIALOG_BUTTON> pressable;
    for (std::size_t i = 0; i < buttons.size(); ++i)
        pressable.push_back({kFirstButton + static_cast<int>(i), buttons[i].c_str()});
    TASKDIALOGCONFIG config{};
    config.cbSize = sizeof config;
    config.hwndParent = parent;
    config.dwFlags = TDF_ALLOW_DIALOG_CANCELLATION | TDF_POSITION_RELATIVE_TO_WINDOW;
    config.pszWindowTitle = title.c_str();
    config.pszMainInstruction = heading.c_str();
    config.pszContent = content.c_str();
    config.cButtons = static_cast<UINT>(pressable.size());
    config.pButtons = pressable.data();
    config.nDefaultButton = kFirstButton;
    int pressed = 0;
    if (FAILED(show(&config, &pressed, nullptr, nullptr)))
        return -1;
    const int index = pressed - kFirstButton;
    return index >= 0 && index < static_cast<int>(buttons.size()) ? index : -1;
}

}  // namespace

int ShowWelcomeTaskDialog(HWND parent, bool channelPackage) {
    const std::wstring title = Text("IDS_STRING_WELCOME_TITLE");
    const std::wstring content = Text("IDS_STRING_WELCOME_DESCRIPTION") + L"\n\n" +
                                 Text(channelPackage ? "IDS_STRING_BULB_DESCRIPTION_CHANNEL"
                                                     : "IDS_STRING_BULB_DESCRIPTION");
    const int chosen = ShowChoice(
        parent, title, title, content,
        {Text("IDS_STRING_GET_STARTED"), Text("IDS_STRING_SIGN_UP"), Text("IDS_STRING_NOT_NOW")});
    switch (chosen) {
        case 0:
            return kSignIn;
        case 1:
            return kSignUp;
        default:
            return kNotNow;
    }
}

int ShowInfoTaskDialog(HWND parent) {
    const std::wstring title = Text("IDS_STRING_WELCOME_TITLE");
    const int chosen = ShowChoice(parent, title, title, Text("IDS_STRING_DLG_INFO_DES"),
                                  {Text("IDS_STRING_GET_STARTED"), Text("IDS_STRING_NOT_NOW")});
    return chosen == 0 ? kGoOn : kNotNow;
}
