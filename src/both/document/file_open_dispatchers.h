// Commands by which the page brings files into play: showFileSelectDialog, openFile, setIdToFile
// and openUrlInBrowser.
#pragma once

#include "bridge/base_dispatcher.h"

struct DocumentServices;

// Lets the user pick PDF files without opening them; each becomes a registry record and a file
// descriptor.
class ShowFileSelectDialogDispatcher : public BaseDispatcher {
  public:
    // `owner` is the channel's page dialog (a PageDialog*), or null.
    ShowFileSelectDialogDispatcher(const DocumentServices& services, void* owner)
        : services_(services), owner_(owner) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
    void* owner_;
};

// Brings the file of the page's service id into the editor: activates it when that revision is
// open, otherwise downloads and opens it.
class OpenFileDispatcher : public BaseDispatcher {
  public:
    OpenFileDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

// Ties the page's service id to a registry id, known or not.
class SetIdToFileDispatcher : public BaseDispatcher {
  public:
    SetIdToFileDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

// Opens an address in the user's browser, or in a tab of the host's web view.
class OpenUrlInBrowserDispatcher : public BaseDispatcher {
  public:
    OpenUrlInBrowserDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};
