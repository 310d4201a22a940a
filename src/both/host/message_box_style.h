// The styles and answers of the host's message box (`HostMessageBox`), as the host numbers them.
#pragma once

namespace message_box {

constexpr int kOkCancel = 1;    // OK and Cancel buttons
constexpr int kWarning = 0x30;  // a warning's icon and an OK button
constexpr int kOk = 1;          // the answer of the OK button

}  // namespace message_box
