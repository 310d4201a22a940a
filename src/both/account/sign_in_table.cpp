#include "sign_in_table.h"

#include "host/host_string.h"

bool SignInTable::GetToken(const std::wstring& baseAddress, std::wstring& token) const {
    token.clear();
    if (table_ == nullptr)
        return false;
    HostWide out(*host_);
    const int result = host_->LoginGetToken(table_, baseAddress.c_str(), L"", out);
    token = out.Text();
    return result != 0;
}

bool SignInTable::GetUserInfo(const std::wstring& baseAddress, AccountUser& user) const {
    if (table_ == nullptr)
        return false;
    HostWide email(*host_);
    HostWide userId(*host_);
    HostWide firstName(*host_);
    HostWide lastName(*host_);
    const int result =
        host_->LoginGetUserInfo(table_, baseAddress.c_str(), email, userId, firstName, lastName);
    user = AccountUser{email.Text(), userId.Text(), firstName.Text(), lastName.Text()};
    return result != 0;
}

int SignInTable::GetState(const std::wstring& baseAddress) const {
    return table_ != nullptr ? host_->LoginGetState(table_, baseAddress.c_str()) : kNoTable;
}

bool SignInTable::ShowSignIn() const {
    return table_ != nullptr && host_->LoginShowSignIn(table_, L"", 0) != 0;
}

bool SignInTable::HasWindowOnMainWindow() const {
    return table_ != nullptr && host_->LoginHasWindow(table_, host_->HostAppGetMainWindow()) != 0;
}

void SignInTable::RegisterDomainCallback(HostLoginDomainCallback callback) const {
    if (table_ != nullptr)
        host_->LoginRegisterDomainCallback(table_, callback);
}
