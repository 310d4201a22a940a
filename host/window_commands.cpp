#include "window_commands.h"

#include <QMainWindow>

#include "save_command.h"

namespace pdfhost {

WindowCommands::WindowCommands(HostApp& app, QMainWindow& frame)
    : QObject(&frame), app_(app), frame_(frame) {
    setObjectName(QString::fromLatin1(kObjectName));
}

void WindowCommands::command(int id) {
    if (id == kSave)
        SaveActiveDocument(app_, &frame_);
}

}  // namespace pdfhost
