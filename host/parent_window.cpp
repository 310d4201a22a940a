#include "parent_window.h"

#include <QMainWindow>

#include "host_app.h"

namespace pdfhost {

QWidget* ParentWindowOf(HostApp& app, HostWindow window) {
    for (const HostFrame frame : app.Frames()) {
        if (reinterpret_cast<void*>(frame) == reinterpret_cast<void*>(window))
            return reinterpret_cast<QMainWindow*>(frame);
    }
    return app.MainWindow();
}

}  // namespace pdfhost
