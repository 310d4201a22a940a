// What a view of the host's documents is told (the desktop window keeps its tabs with it).
#pragma once

namespace pdfhost {

class HostDocument;

class DocumentObserver {
  public:
    virtual ~DocumentObserver() = default;
    // A document with a tab was added, at the end of the tabs.
    virtual void DocumentAdded(HostDocument& document) = 0;
    // A document with a tab is about to go.
    virtual void DocumentRemoving(HostDocument& document) = 0;
    // The active tab changed; null when a tab that holds no document became active.
    virtual void ActiveChanged(HostDocument* active) = 0;
    // The modified flag, the path or the content of a document changed.
    virtual void DocumentChanged(HostDocument& document) = 0;
};

}  // namespace pdfhost
