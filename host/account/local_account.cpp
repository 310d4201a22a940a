#include "account/local_account.h"

#include <random>

#include "profile_json_file.h"

namespace pdfhost {
namespace {

const AccountUser kLocalUser{"user@pdfhost.local", "local-user-1", "Local", "User"};

std::string TextOf(const Json::Value& object, const char* key, const std::string& fallback) {
    const Json::Value* value = object.find(key, key + std::char_traits<char>::length(key));
    return value != nullptr && value->isString() ? value->asString() : fallback;
}

// 32 random hexadecimal digits.
std::string NewToken() {
    std::random_device source;
    std::uniform_int_distribution<int> digit(0, 15);
    std::string token;
    for (int i = 0; i < 32; ++i)
        token += "0123456789abcdef"[digit(source)];
    return token;
}

}  // namespace

LocalAccount::LocalAccount(std::filesystem::path file) : file_(std::move(file)), user_(kLocalUser) {
    Read();
}

void LocalAccount::Read() {
    const Json::Value root = ReadProfileJson(file_, "account");
    signedIn_ = root["signedIn"].isBool() && root["signedIn"].asBool();
    server_ = TextOf(root, "server", "");
    if (const Json::Value& user = root["user"]; user.isObject()) {
        user_ = AccountUser{TextOf(user, "email", kLocalUser.email),
                            TextOf(user, "userId", kLocalUser.userId),
                            TextOf(user, "firstName", kLocalUser.firstName),
                            TextOf(user, "lastName", kLocalUser.lastName)};
    }
    if (const Json::Value& tokens = root["tokens"]; tokens.isObject()) {
        for (const std::string& server : tokens.getMemberNames()) {
            if (tokens[server].isString() && !tokens[server].asString().empty())
                tokens_[server] = tokens[server].asString();
        }
    }
}

void LocalAccount::SignIn(const std::string& server) {
    signedIn_ = true;
    if (!server.empty())
        server_ = server;
    Write();
}

void LocalAccount::SignOut() {
    signedIn_ = false;
    Write();
}

std::optional<std::string> LocalAccount::TokenFor(const std::string& server) {
    if (!signedIn_)
        return std::nullopt;
    const std::string& key = server.empty() ? server_ : server;
    auto [entry, made] = tokens_.try_emplace(key);
    if (made) {
        entry->second = NewToken();
        Write();
    }
    return entry->second;
}

void LocalAccount::Write() const {
    Json::Value root(Json::objectValue);
    root["signedIn"] = signedIn_;
    root["server"] = server_;
    Json::Value& user = root["user"];
    user["email"] = user_.email;
    user["userId"] = user_.userId;
    user["firstName"] = user_.firstName;
    user["lastName"] = user_.lastName;
    Json::Value& tokens = root["tokens"] = Json::Value(Json::objectValue);
    for (const auto& [server, token] : tokens_)
        tokens[server] = token;

    WriteProfileJson(file_, root, "account");
}

}  // namespace pdfhost
