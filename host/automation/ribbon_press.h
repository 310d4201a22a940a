// The scripted line {"host":"ribbon","item":NAME}: the user presses the ribbon entry NAME of the
// main window. The entry's enable procedure is asked first, as the ribbon asks before it lets a
// button be pressed.
#pragma once

#include <string>

#include <json/value.h>

namespace pdfhost {

class HostApp;

// Runs the entry's execute procedure. Gives an error text ("disabled: NAME" when its enable
// procedure refuses), or "" when the entry ran.
std::string PressRibbonEntry(HostApp& app, const Json::Value& line);

}  // namespace pdfhost
