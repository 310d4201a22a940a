#include "account_change.h"

#include <string>

#include "account/account_services.h"
#include "account/sign_in_table.h"
#include "bridge/page_events.h"
#include "config/brevan_config.h"
#include "config/service_config.h"

namespace {

// The host calls the account-change callback with the server's address only, no client data, so
// the callback reaches the services through this.
const AccountServices* g_listener = nullptr;

void BREVAN_HOSTCALL OnDomainChanged(const wchar_t* server) {
    if (g_listener != nullptr)
        OnSignedInUserChanged(*g_listener, server);
}

// Whether the host holds the same token for the account on both addresses.
bool SameAccount(const SignInTable& login, const std::wstring& present, const std::wstring& next) {
    std::wstring presentToken;
    std::wstring nextToken;
    const bool gotPresent = login.GetToken(present, presentToken);
    const bool gotNext = login.GetToken(next, nextToken);
    return gotPresent && gotNext && presentToken == nextToken;
}

}  // namespace

void ListenToAccountChanges(const AccountServices& services) {
    const SignInTable login = services.signInTable();
    if (!login.Available())
        return;
    g_listener = &services;
    login.RegisterDomainCallback(&OnDomainChanged);
}

void StopListeningToAccountChanges(const AccountServices& services) {
    if (g_listener == &services)
        g_listener = nullptr;
}

void OnSignedInUserChanged(const AccountServices& services, const wchar_t* server) {
    if (server == nullptr || !services.config)
        return;
    const std::wstring next = server;
    if (next.empty()) {
        services.config->SetServerAddress(L"");
        UserSignOutEvent(services.page).Send();
        return;
    }
    const std::wstring present = services.config->serverAddress;
    if (!present.empty() && SameAccount(services.signInTable(), present, next))
        return;
    services.config->SetServerAddress(next);
    if (services.serviceConfig)
        services.serviceConfig->Load();
    services.reloadPanes(true);
}
