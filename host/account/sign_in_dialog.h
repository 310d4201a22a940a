// The host's sign-in window. On the desktop it is a small modal dialog that names the local user
// and lets the user choose the account server. Headless it takes the answer queued for "signIn"
// (true: the user signs in); in scripted mode it prints
// {"dialog":"signIn","server":...,"answer":...}, and {"unanswered":"signIn"} after it when no
// answer was queued, which cancels it.
#pragma once

#include <optional>
#include <string>

namespace pdfhost {

class HostApp;
class LocalAccount;

// The server the user signs in to (empty: the one signed in to last), or nothing when the user
// cancelled.
std::optional<std::string> AskToSignIn(HostApp& app, const LocalAccount& account);

}  // namespace pdfhost
