// The account server's page where a new user makes an account.
#pragma once

#include <QUrl>
#include <string>

namespace pdfhost {

class HostApp;

// <server>/signup; an empty URL when there is no server.
QUrl SignUpAddress(const std::string& server);

// Opens the sign-up page of the server signed in to last in the user's web browser; without a
// server a message box says where to choose one. False when nothing was opened.
bool OpenSignUpPage(HostApp& app);

}  // namespace pdfhost
