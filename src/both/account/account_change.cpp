#include "account_change.h"

#include <string>

#include "account/sign_in_table.h"
#include "app/brevan.h"
#include "bridge/page_events.h"
#include "config/brevan_config.h"
#include "config/service_config.h"

namespace {

Brevan* g_listener = nullptr;

void OnDomainChanged(const wchar_t* server) {
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

void ListenToAccountChanges(Brevan& app) {
    const SignInTable login = app.signInTable();
    if (!login.Available())
        return;
    g_listener = &app;
    login.RegisterDomainCallback(&OnDomainChanged);
}

void StopListeningToAccountChanges(const Brevan& app) {
    if (g_listener == &app)
        g_listener = nullptr;
}

void OnSignedInUserChanged(Brevan& app, const wchar_t* server) {
    if (server == nullptr || !app.config)
        return;
    const std::wstring next = server;
    if (next.empty()) {
        app.config->SetServerAddress(L"");
        UserSignOutEvent(app).Send();
        return;
    }
    const std::wstring present = app.config->serverAddress;
    if (!present.empty() && SameAccount(app.signInTable(), present, next))
        return;
    app.config->SetServerAddress(next);
    if (app.serviceConfig)
        app.serviceConfig->Load();
    app.ReloadPanes(true);
}
