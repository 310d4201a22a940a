// The editor's undo history of annotation changes: what was added and what was deleted, per
// document, newest last. Entries name annotations by handle, so an entry whose annotation or
// document went is simply skipped.
#pragma once

#include <deque>
#include <functional>
#include <optional>

#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

class UndoStack {
  public:
    enum class Change { kAdded, kDeleted };
    struct Entry {
        HostDoc document = nullptr;
        HostAnnot annotation = nullptr;
        Change change = Change::kAdded;
    };

    // The one handle plug-ins record through.
    HostUndoManager Handle() const { return handle_; }

    void Record(HostDoc document, HostAnnot annotation, Change change);
    // Called with each entry the history lets go of because it is full: what it named can no
    // longer be undone.
    void OnEvicted(std::function<void(const Entry&)> callback) { onEvicted_ = std::move(callback); }
    // Takes the newest entry of the document, if any.
    std::optional<Entry> TakeLast(HostDoc document);
    std::size_t Count(HostDoc document) const;
    // Whether an entry names the annotation.
    bool Mentions(HostAnnot annotation) const;
    // Forgets the document's history (it closed, or a change that cannot be undone came).
    void ForgetDocument(HostDoc document);

  private:
    static constexpr std::size_t kMaxEntries = 1000;

    HostUndoManager handle_ = reinterpret_cast<HostUndoManager>(NextHandleValue());
    std::deque<Entry> entries_;  // oldest first; a full history drops from the front
    std::function<void(const Entry&)> onEvicted_;
};

}  // namespace pdfhost
