// Which storage a file picked in the host's file dialog came from, by the name of the host
// plug-in that served the selection.
#pragma once

#include <string>

// The `drive` value of a file descriptor for the host plug-in `pluginName`; "local" for the
// local disk and for any name that is not a known cloud plug-in (the match is exact).
std::wstring DriveOfPlugin(const std::wstring& pluginName);
