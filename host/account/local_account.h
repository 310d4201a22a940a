// The host's local account, kept in one JSON file of the profile: whether the user is signed in,
// who the user is, the account server signed in to last, and the token the account holds for
// each server. Every change is written at once (temporary file, then rename).
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace pdfhost {

struct AccountUser {
    std::string email;
    std::string userId;
    std::string firstName;
    std::string lastName;
};

class LocalAccount {
  public:
    // Reads `file` if it exists; a missing or unreadable file gives a signed-out account of a
    // made-up local user, with no server.
    explicit LocalAccount(std::filesystem::path file);

    bool SignedIn() const { return signedIn_; }
    // The server signed in to last; kept after signing out.
    const std::string& Server() const { return server_; }
    const AccountUser& User() const { return user_; }
    const std::filesystem::path& File() const { return file_; }

    // Signs in to `server`; an empty `server` keeps the one signed in to last.
    void SignIn(const std::string& server);
    void SignOut();

    // The account's token for `server` (empty: the server signed in to last) while signed in,
    // made the first time it is asked for and kept; nothing while signed out.
    std::optional<std::string> TokenFor(const std::string& server);

  private:
    void Read();
    void Write() const;

    std::filesystem::path file_;
    bool signedIn_ = false;
    std::string server_;
    AccountUser user_;
    std::map<std::string, std::string> tokens_;
};

}  // namespace pdfhost
