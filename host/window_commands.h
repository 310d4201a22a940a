// The command target of a main window: the direct child named "pdfhost.windowCommands" of every
// frame. Plug-ins send the editor's menu commands to it by invoking command(id) directly, as they
// would send a command message to the window. Known commands:
//   0xE103  Save the active document (see save_command.h); returns when the save is done.
// Others do nothing.
#pragma once

#include <QObject>

class QMainWindow;

namespace pdfhost {

class HostApp;

class WindowCommands : public QObject {
    Q_OBJECT

  public:
    static constexpr const char* kObjectName = "pdfhost.windowCommands";
    static constexpr int kSave = 0xE103;

    // Becomes a child of `frame` and goes with it.
    WindowCommands(HostApp& app, QMainWindow& frame);

    Q_INVOKABLE void command(int id);

  private:
    HostApp& app_;
    QMainWindow& frame_;
};

}  // namespace pdfhost
