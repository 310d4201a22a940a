// A save of a temporary document (one the host made and never wrote to a file) that a command
// started. The host replaces such a document by the saved file, so the close that follows leaves
// the pane open, and only the host's saved hook tells whether the save happened.
#pragma once

#include <utility>

class TemporarySave {
  public:
    // A command starts a save of a document; `temporary` says whether it is a temporary one.
    void Start(bool temporary) { underway_ = temporary; }
    bool underway() const { return underway_; }
    // The host's saved hook: `ok` when the file was written.
    void OnSaved(bool ok) {
        if (underway_ && ok)
            saved_ = true;
    }
    bool saved() const { return saved_; }
    // Whether a temporary document was saved since the last call; forgets it.
    bool TakeSaved() { return std::exchange(saved_, false); }
    // The last document closed: the save is over.
    void End() { underway_ = false; }

  private:
    bool underway_ = false;
    bool saved_ = false;
};
