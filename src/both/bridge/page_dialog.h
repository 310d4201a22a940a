// PageDialog: a dialog that shows the page — the task pane's dialog of a main window, or the
// modal dialog of a batch run. The platform makes them (PlatformServices::MakeTaskPaneDialog,
// MakeBatchDialog). On the host-browser channel of a dialog, the `owner` that the command table
// hands to the commands is the dialog as a PageDialog*.
#pragma once

#include <string>
#include <vector>

#include "host/host_abi.h"

class PageDialog {
  public:
    virtual ~PageDialog() = default;

    // The dialog's window as the host takes windows (on Linux a QWidget*).
    virtual HostWindow Window() const = 0;
    virtual void Show() = 0;

    // Shows the page again. The address is built first when `rebuild` is set or none was built.
    virtual void Reload(bool rebuild) = 0;

    // Calls the page's function `name` with text arguments: in the embedded browser always as
    // window.__dispatchEvent with the arguments as script text; in the host's web view as a call
    // of `name` with string arguments, whose result goes to `result` when one is asked for.
    virtual void CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                            std::wstring* result) = 0;

    // The browser has finished a navigation: the host's web view, shown while the page loaded,
    // is hidden and forgotten.
    virtual void HideHostView() = 0;
};

// The modal page dialog of a batch run.
class BatchPageDialog : public PageDialog {
  public:
    // Shows the dialog modally and returns the result it ended with (1 for OK).
    virtual int RunModal() = 0;
    // Ends the modal run with `result`, as the dialog's OK or close command does.
    virtual void EndModal(int result) = 0;
    virtual void SetVisible(bool visible) = 0;
};
