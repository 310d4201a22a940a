// The editor's message box. `buttons` holds the button set in its low four bits (0 OK, 1 OK and
// Cancel, 2 Abort, Retry and Ignore, 3 Yes, No and Cancel, 4 Yes and No, 5 Retry and Cancel)
// and the icon in the next four (0x10 stop, 0x20 question, 0x30 warning, 0x40 information).
// The answer is the button pressed: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No.
//
// On the desktop the box is modal. Headless it takes the answer queued for "messageBox"
// (DialogAnswers); with none it is cancelled, answering as closing the box would (Cancel,
// else OK for a lone OK, No for Yes and No, Abort for Abort, Retry and Ignore). In scripted
// mode it prints {"dialog":"messageBox","text":...,"title":...,"answer":N}, and
// {"unanswered":"messageBox"} after it when it was cancelled.
#pragma once

#include <string>

namespace pdfhost {

class HostApp;

struct MessageBoxRequest {
    std::string text;
    std::string title;
    int buttons = 0;
};

int ShowMessageBox(HostApp& app, const MessageBoxRequest& request);

}  // namespace pdfhost
