#include "windows_system_name.h"

namespace {

constexpr unsigned kOldLinePlatform = 1;

}  // namespace

std::string WindowsSystemName(const WindowsVersion& v) {
    const auto is = [&](unsigned major, unsigned minor) {
        return v.major == major && v.minor == minor;
    };
    if (is(6, 3))
        return "Microsoft Windows 8.1";
    if (is(10, 0))
        return "Microsoft Windows 10";
    if (v.platform == kOldLinePlatform) {
        if (is(4, 0))
            return "Microsoft Windows 95";
        if (is(4, 10))
            return "Microsoft Windows 98";
        if (is(4, 90))
            return "Microsoft Windows Me";
        return {};
    }
    if (is(4, 0))
        return "Microsoft Windows NT 4.0";
    if (is(5, 0))
        return "Microsoft Windows 2000";
    if (is(5, 1))
        return "Microsoft Windows XP";
    if (is(5, 2)) {
        if (v.workstation && v.x64)
            return "Microsoft Windows XP Professional x64 Edition";
        return v.serverR2 ? "Microsoft Windows Server 2003 R2" : "Microsoft Windows Server 2003";
    }
    if (is(6, 0))
        return v.workstation ? "Microsoft Windows Vista" : "Microsoft Windows Server 2008";
    if (is(6, 1))
        return v.workstation ? "Microsoft Windows 7" : "Microsoft Windows Server 2008 R2";
    if (is(6, 2))
        return v.workstation ? "Microsoft Windows 8" : "Microsoft Windows Server 2012";
    return {};
}
