// The desktop's Account menu: sign in (the host's sign-in window), sign out, and create an
// account on the server's sign-up page. The plug-ins hear each change through their callbacks.
#pragma once

class QMainWindow;

namespace pdfhost {
class HostApp;
}

namespace pdfhost::ui {

void AddAccountMenu(HostApp& app, QMainWindow& window);

}  // namespace pdfhost::ui
