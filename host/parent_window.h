// The parent of a dialog that a plug-in asks for with a window handle.
#pragma once

#include "host_abi.h"

class QWidget;

namespace pdfhost {

class HostApp;

// The main window that `window` names, else the first main window (null without one). A handle
// that names no main window is never dereferenced.
QWidget* ParentWindowOf(HostApp& app, HostWindow window);

}  // namespace pdfhost
