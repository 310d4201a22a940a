// The "login" extension table, version 103: the host's local account as the plug-ins read it.
// The account is one local user; while signed in, every server address is answered for it.
#include "account/account_service.h"
#include "account/sign_up_page.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::ExtOp;

constexpr int kSignedOut = 0;
constexpr int kSignedIn = 2;

int LoginGetToken(const wchar_t* baseAddress, const wchar_t*, HostWideString token) {
    return Guarded(0, [&](HostApp& app) {
        const std::optional<std::string> found =
            app.Account().Local().TokenFor(Utf8Of(baseAddress));
        SetWideUtf8(app, token, found.value_or(""));
        return found.has_value() ? 1 : 0;
    });
}

// Asked when the user chooses to sign up: the desktop opens the server's sign-up page in the
// web browser first. The answer stays the number of sign-in windows open.
int LoginHasWindow(HostWindow) {
    return Guarded(0, [](HostApp& app) {
        if (!app.Options().headless)
            OpenSignUpPage(app);
        return app.Account().OpenWindows();
    });
}

int LoginGetUserInfo(const wchar_t*, HostWideString email, HostWideString userId,
                     HostWideString firstName, HostWideString lastName) {
    return Guarded(0, [&](HostApp& app) {
        const LocalAccount& account = app.Account().Local();
        const AccountUser none;
        const AccountUser& user = account.SignedIn() ? account.User() : none;
        SetWideUtf8(app, email, user.email);
        SetWideUtf8(app, userId, user.userId);
        SetWideUtf8(app, firstName, user.firstName);
        SetWideUtf8(app, lastName, user.lastName);
        return account.SignedIn() ? 1 : 0;
    });
}

int LoginGetState(const wchar_t*) {
    return Guarded(kSignedOut, [](HostApp& app) {
        return app.Account().Local().SignedIn() ? kSignedIn : kSignedOut;
    });
}

// The server of the signed-in account; empty while signed out.
void LoginGetServerAddress(HostWideString out) {
    Guarded([&](HostApp& app) {
        const LocalAccount& account = app.Account().Local();
        SetWideUtf8(app, out, account.SignedIn() ? account.Server() : "");
    });
}

// The server signed in to last, also while signed out.
void LoginGetServerAddressFallback(HostWideString out) {
    Guarded([&](HostApp& app) { SetWideUtf8(app, out, app.Account().Local().Server()); });
}

int LoginShowSignIn(const wchar_t*, int) {
    return Guarded(0, [](HostApp& app) { return app.Account().ShowSignIn(app) ? 1 : 0; });
}

void LoginRegisterDomainCallback(HostLoginDomainCallback callback) {
    Guarded([&](HostApp& app) {
        app.Account().AddDomainCallback(callback, TableManager::CallingPlugin());
    });
}

}  // namespace

void RegisterLoginTable(ExtensionRegistry& extensions) {
    extensions.Register<ExtOp::LoginGetToken>(&LoginGetToken);
    extensions.Register<ExtOp::LoginHasWindow>(&LoginHasWindow);
    extensions.Register<ExtOp::LoginGetUserInfo>(&LoginGetUserInfo);
    extensions.Register<ExtOp::LoginGetState>(&LoginGetState);
    extensions.Register<ExtOp::LoginGetServerAddress>(&LoginGetServerAddress);
    extensions.Register<ExtOp::LoginGetServerAddressFallback>(&LoginGetServerAddressFallback);
    extensions.Register<ExtOp::LoginShowSignIn>(&LoginShowSignIn);
    extensions.Register<ExtOp::LoginRegisterDomainCallback>(&LoginRegisterDomainCallback);
}

}  // namespace pdfhost
