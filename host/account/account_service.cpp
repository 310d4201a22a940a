#include "account/account_service.h"

#include <algorithm>

#include "account/sign_in_dialog.h"
#include "wide_text.h"

namespace pdfhost {

AccountService::AccountService(std::filesystem::path file, const HostOptions& options)
    : account_(std::move(file)) {
    if (!options.accountServer.empty()) {
        // Naming the server goes through a sign-in; the state the profile had is kept.
        const bool wasSignedIn = account_.SignedIn();
        account_.SignIn(options.accountServer);
        if (!wasSignedIn)
            account_.SignOut();
    }
    const std::optional<bool> signedIn =
        options.signedIn.has_value() || !options.headless ? options.signedIn : true;
    if (signedIn.has_value() && *signedIn)
        account_.SignIn("");
    else if (signedIn.has_value())
        account_.SignOut();
}

void AccountService::AddDomainCallback(HostLoginDomainCallback callback, uint32_t pluginId) {
    if (callback == nullptr)
        return;
    const bool known = std::any_of(callbacks_.begin(), callbacks_.end(),
                                   [&](const Entry& entry) { return entry.callback == callback; });
    if (!known)
        callbacks_.push_back({callback, pluginId});
}

void AccountService::RemovePlugin(uint32_t pluginId) {
    std::erase_if(callbacks_, [&](const Entry& entry) { return entry.pluginId == pluginId; });
}

void AccountService::SignIn(const std::string& server) {
    account_.SignIn(server);
    if (!account_.Server().empty())
        Notify(account_.Server());
}

void AccountService::SignOut() {
    account_.SignOut();
    Notify("");
}

bool AccountService::ShowSignIn(HostApp& app) {
    ++openWindows_;
    const std::optional<std::string> server = AskToSignIn(app, account_);
    --openWindows_;
    if (!server.has_value())
        return false;
    SignIn(*server);
    return true;
}

void AccountService::Notify(const std::string& server) {
    const std::wstring text = WideOf(server);
    // A callback may register or drop callbacks while it runs.
    const std::vector<Entry> snapshot = callbacks_;
    for (const Entry& entry : snapshot) {
        const bool still = std::any_of(callbacks_.begin(), callbacks_.end(), [&](const Entry& e) {
            return e.callback == entry.callback;
        });
        if (still)
            entry.callback(text.c_str());
    }
}

}  // namespace pdfhost
