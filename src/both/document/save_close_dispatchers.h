// The commands that end a piece of work on a document: saveDocument writes it in place or under a
// new name, reload shows the page again, closeCurrentFile closes the batch's document.
#pragma once

#include "bridge/base_dispatcher.h"
#include "host/host_abi.h"

struct DocumentServices;

// Saves the current document through the host's own Save command, or with `isSaveAs` under a
// name the user picks (offered with `suffix`). During a batch the batch session saves instead.
class SaveDocumentDispatcher : public BaseDispatcher {
  public:
    SaveDocumentDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    Json::Value SaveInPlace(HostDoc doc, bool temporary);
    Json::Value SaveAs(HostDoc doc, const Json::Value& root);

    const DocumentServices& services_;
};

// Reloads the page of the channel's page dialog (`owner`); on a channel without one it only
// answers. The reply never carries the request's identifier.
class ReloadDispatcher : public BaseDispatcher {
  public:
    explicit ReloadDispatcher(void* owner) : owner_(owner) {}
    Json::Value Run() override;

  private:
    void* owner_;
};

// Closes the batch's current document unless the user had it open before the batch, and lets the
// current document fall back to the active one. Without a batch document it does nothing.
class CloseCurrentFileDispatcher : public BaseDispatcher {
  public:
    explicit CloseCurrentFileDispatcher(const DocumentServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};
