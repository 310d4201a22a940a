// The host's account as the plug-ins see it through the "login" table: the local account, the
// sign-in window, and the plug-ins' callbacks that hear of every change of the signed-in user.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "account/local_account.h"
#include "host_abi.h"
#include "host_options.h"

namespace pdfhost {

class HostApp;

class AccountService {
  public:
    // Starts signed in or out as the options say; without a word from them a headless host
    // starts signed in and the desktop keeps the state of the account file.
    AccountService(std::filesystem::path file, const HostOptions& options);

    LocalAccount& Local() { return account_; }
    const LocalAccount& Local() const { return account_; }

    // A callback registered twice is kept once; `pluginId` is the plug-in that registered it.
    void AddDomainCallback(HostLoginDomainCallback callback, uint32_t pluginId);
    // Drops the callbacks of a plug-in that goes away.
    void RemovePlugin(uint32_t pluginId);
    std::size_t CallbackCount() const { return callbacks_.size(); }

    // The user signs in to `server` (empty: the server signed in to last). The callbacks hear the
    // server, unless there is none to name: an empty text would tell them of a sign-out.
    void SignIn(const std::string& server);
    // The user signs out; the callbacks hear the empty text.
    void SignOut();

    // Shows the sign-in window and signs in when the user goes through it; true then.
    bool ShowSignIn(HostApp& app);
    // How many sign-in windows are open.
    int OpenWindows() const { return openWindows_; }

  private:
    struct Entry {
        HostLoginDomainCallback callback;
        uint32_t pluginId;
    };

    void Notify(const std::string& server);

    LocalAccount account_;
    std::vector<Entry> callbacks_;
    int openWindows_ = 0;
};

}  // namespace pdfhost
