// Calls into the host's "login" table, the host's own account: sign-in state, user details,
// tokens, its sign-in window and its notice of account changes. Without the table every call
// answers the neutral result of its kind: false or empty, and the state kNoTable.
#pragma once

#include <string>

#include "host/host_api.h"

struct AccountUser {
    std::wstring email;
    std::wstring userId;
    std::wstring firstName;
    std::wstring lastName;
};

class SignInTable {
  public:
    static constexpr int kSignedIn = 2;
    static constexpr int kNoTable = 3;

    SignInTable(HostApi& host, HostExtTable table) : host_(&host), table_(table) {}

    bool Available() const { return table_ != nullptr; }

    // The host's token for the account on `baseAddress`. Returns whether the host reported
    // success; `token` holds what the host gave either way.
    bool GetToken(const std::wstring& baseAddress, std::wstring& token) const;
    // The signed-in user's details; false when the host has none.
    bool GetUserInfo(const std::wstring& baseAddress, AccountUser& user) const;
    int GetState(const std::wstring& baseAddress) const;
    bool IsSignedIn(const std::wstring& baseAddress) const {
        return GetState(baseAddress) == kSignedIn;
    }
    // Shows the host's sign-in window; true when the user went through it.
    bool ShowSignIn() const;
    // Whether the table counts a window of its own on the host's main window; false without
    // the table.
    bool HasWindowOnMainWindow() const;
    void RegisterDomainCallback(HostLoginDomainCallback callback) const;

  private:
    HostApi* host_;
    HostExtTable table_;
};
