// Whether the user keeps the task pane open, which the plug-in follows from one PDF tab to the
// next, and whether a hide under way is the plug-in's own doing.
#pragma once

#include <functional>

// The name under which the host knows the plug-in's task pane.
inline constexpr const char* kTaskPaneName = "BrevanTaskPane";

class TaskPaneState {
  public:
    bool shown() const { return shown_; }
    // The host's argument for showing the pane: 1 shown, 0 hidden.
    int shownFlag() const { return shown_ ? 1 : 0; }
    void SetShown(bool shown) { shown_ = shown; }

    // The host closed the pane: the user's choice, unless the plug-in is hiding it itself.
    void OnClosed() {
        if (!hiding_)
            shown_ = false;
    }
    // Runs `hide`; a close of the pane meanwhile is the plug-in's own.
    void HideByPlugin(const std::function<void()>& hide) {
        hiding_ = true;
        hide();
        hiding_ = false;
    }
    bool hiding() const { return hiding_; }

  private:
    bool shown_ = false;
    bool hiding_ = false;
};
