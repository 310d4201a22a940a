// The scripted lines that change the local account: {"host":"signIn","server":S} signs in to
// server S (without "server": the server signed in to last) and {"host":"signOut"} signs out.
// Either way the plug-ins' domain callbacks fire.
#pragma once

#include <string>

#include <json/value.h>

namespace pdfhost {

class HostApp;

// Handles a "signIn" or "signOut" line; gives an error text for a line it cannot take, else "".
std::string ChangeAccount(HostApp& app, const Json::Value& line);

}  // namespace pdfhost
