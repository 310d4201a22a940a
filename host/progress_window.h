// A progress window of the editor. On the desktop it is a modal QProgressDialog, with a Cancel
// button when made cancellable. Headless it has no window; in scripted mode it prints
//   {"progress":"show","title":T}          when it first shows (first text, position or pump),
//   {"progress":"update","pos":P,"title":T} when the position and/or the text changed,
//   {"progress":"close"}                    when it goes,
// and never a line that changes nothing.
#pragma once

#include <QPointer>
#include <QProgressDialog>
#include <memory>
#include <optional>
#include <string>

class QWidget;

namespace pdfhost {

class HostApp;

class ProgressWindow {
  public:
    ProgressWindow(HostApp& app, QWidget* parent, bool cancellable);
    ~ProgressWindow();
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    void SetText(const std::string& text);
    void SetRange(int low, int high);
    void SetPos(int pos);
    // Shows pending changes and lets the event loop handle what is waiting (input, timers).
    void Pump();
    // Whether the user pressed Cancel since the last SetCancelled(false).
    bool IsCancelled() const { return cancelled_; }
    void SetCancelled(bool cancelled) { cancelled_ = cancelled; }
    // Takes the window down; a window that never showed goes without a line.
    void Close();

  private:
    void ShowOnce();
    void WriteUpdate(bool titleChanged, bool posChanged);

    HostApp& app_;
    // Its parent window may take it down first.
    QPointer<QProgressDialog> dialog_;
    std::string title_;
    std::optional<int> pos_;
    bool shown_ = false;
    bool closed_ = false;
    bool cancelled_ = false;
};

}  // namespace pdfhost
