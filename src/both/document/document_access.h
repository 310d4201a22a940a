// DocumentAccess: which document is current and how documents and registry ids find each other.
// The registry and the search result store exist only while the plug-in is initialised, so the
// access follows the application's slots for them and answers "none" while they are empty.
#pragma once

#include <memory>
#include <string>

#include "document/batch_state.h"
#include "host/host_api.h"

class DocumentRegistry;
class SearchResultStore;

class DocumentAccess {
  public:
    DocumentAccess(HostApi& host, BatchState batch,
                   const std::unique_ptr<DocumentRegistry>& registry,
                   const std::unique_ptr<SearchResultStore>& searchResults)
        : host_(host), batch_(batch), registry_(registry), searchResults_(searchResults) {}

    HostApi& host() const { return host_; }
    const BatchState& batch() const { return batch_; }
    // Null while the plug-in is not initialised.
    DocumentRegistry* registry() const { return registry_.get(); }
    SearchResultStore* searchResults() const { return searchResults_.get(); }

    // The batch's document during a batch run, otherwise the host's active document (may be null).
    HostDoc CurrentDoc() const;
    // The registry id of an open document; false when it has none or the registry is gone.
    bool FileIdOf(HostDoc doc, std::wstring& id) const;
    // The open document that carries a registry id; false when none does.
    bool DocOf(const std::wstring& id, HostDoc& doc) const;

  private:
    HostApi& host_;
    BatchState batch_;
    const std::unique_ptr<DocumentRegistry>& registry_;
    const std::unique_ptr<SearchResultStore>& searchResults_;
};
