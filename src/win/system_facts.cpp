#include <windows.h>

#include "account/system_language.h"
#include "account/usage_report.h"
#include "windows_system_name.h"

namespace {

// The version numbers from ntdll, which no compatibility shim alters; the high bits of the build
// number are flags.
using NtVersionNumbers = void(WINAPI*)(DWORD* major, DWORD* minor, DWORD* build);

WindowsVersion ThisVersion() {
    WindowsVersion version;
    OSVERSIONINFOEXW info{};
    info.dwOSVersionInfoSize = sizeof info;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    if (GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&info))) {
#pragma GCC diagnostic pop
        version.major = info.dwMajorVersion;
        version.minor = info.dwMinorVersion;
        version.platform = info.dwPlatformId;
        version.workstation = info.wProductType == VER_NT_WORKSTATION;
    }
    if (HMODULE ntdll = GetModuleHandleW(L"ntdll.dll"); ntdll != nullptr) {
        const auto numbers = reinterpret_cast<NtVersionNumbers>(
            reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetNtVersionNumbers")));
        if (numbers != nullptr) {
            DWORD major = 0;
            DWORD minor = 0;
            DWORD build = 0;
            numbers(&major, &minor, &build);
            version.major = major;
            version.minor = minor;
        }
    }
    SYSTEM_INFO system{};
    GetNativeSystemInfo(&system);
    version.x64 = system.wProcessorArchitecture == PROCESSOR_ARCHITECTURE_AMD64;
    version.serverR2 = GetSystemMetrics(SM_SERVERR2) != 0;
    return version;
}

}  // namespace

SystemFacts SystemFacts::OfThisSystem() {
    return SystemFacts{WindowsSystemName(ThisVersion()),
                       ReportedLanguage(static_cast<uint16_t>(GetUserDefaultUILanguage()))};
}
