// The system's name as usage reports carry it, from the version numbers the system reports.
#pragma once

#include <string>

struct WindowsVersion {
    unsigned major = 0;
    unsigned minor = 0;
    // VER_PLATFORM_WIN32_WINDOWS (1) for the old line, VER_PLATFORM_WIN32_NT (2) otherwise.
    unsigned platform = 2;
    bool workstation = true;  // the product type is a workstation's
    bool x64 = false;         // the native processor is a 64-bit x86
    bool serverR2 = false;    // the system says it is a server's second release
};

// "Microsoft Windows 8.1" for 6.3, "Microsoft Windows 10" for 10.0; the older names by number,
// product type and platform; the empty text for a version the list doesn't know.
std::string WindowsSystemName(const WindowsVersion& version);
