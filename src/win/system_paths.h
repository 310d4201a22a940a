// Where this plug-in and the system's scratch files live.
#pragma once

#include <windows.h>

#include <string>

// The module (library or program) that holds this code.
HMODULE ThisModuleHandle();
// The file of the library that holds this code.
std::wstring ThisModulePath();
// The system's temporary folder, with its trailing separator.
std::wstring SystemTempFolder();
