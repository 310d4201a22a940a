#include "automation/account_lines.h"

#include "host_app.h"

namespace pdfhost {

std::string ChangeAccount(HostApp& app, const Json::Value& line) {
    const std::string command = line["host"].asString();
    if (command == "signOut") {
        app.Account().SignOut();
        return {};
    }
    const Json::Value& server = line["server"];
    if (!server.isNull() && !server.isString())
        return "\"signIn\" needs a \"server\" string";
    app.Account().SignIn(server.isString() ? server.asString() : std::string());
    return {};
}

}  // namespace pdfhost
