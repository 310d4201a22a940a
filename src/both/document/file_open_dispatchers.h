// Commands by which the page brings files into play: showFileSelectDialog, openFile, setIdToFile
// and openUrlInBrowser.
#pragma once

#include "bridge/base_dispatcher.h"

class Brevan;

// Lets the user pick PDF files without opening them; each becomes a registry record and a file
// descriptor.
class ShowFileSelectDialogDispatcher : public BaseDispatcher {
  public:
    // `owner` is the channel's page dialog (a PageDialog*), or null.
    ShowFileSelectDialogDispatcher(Brevan& app, void* owner) : app_(app), owner_(owner) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
    void* owner_;
};

// Brings the file of the page's service id into the editor: activates it when that revision is
// open, otherwise downloads and opens it.
class OpenFileDispatcher : public BaseDispatcher {
  public:
    OpenFileDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

// Ties the page's service id to a registry id, known or not.
class SetIdToFileDispatcher : public BaseDispatcher {
  public:
    SetIdToFileDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

// Opens an address in the user's browser, or in a tab of the host's web view.
class OpenUrlInBrowserDispatcher : public BaseDispatcher {
  public:
    OpenUrlInBrowserDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};
