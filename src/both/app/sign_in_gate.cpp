#include "sign_in_gate.h"

#include <iomanip>
#include <sstream>

#include "app/platform_services.h"
#include "config/brevan_config.h"
#include "config/plugin_sections.h"
#include "host/host_string.h"
#include "logging/local_time.h"
#include "util/utf.h"

namespace {

constexpr const char* kStampFormat = "%Y-%m-%d %H:%M:%S";
constexpr const wchar_t* kWelcomeKey = L"welcome";
constexpr const wchar_t* kLastTimeKey = L"lastTime";
constexpr std::time_t kSecondsPerDay = 86400;

// The local time of a stamp written with kStampFormat; false when it is not one.
bool ParseStamp(const std::wstring& stamp, std::time_t& time) {
    std::tm parts{};
    std::istringstream in(ToUtf8(stamp));
    in >> std::get_time(&parts, kStampFormat);
    if (in.fail())
        return false;
    parts.tm_isdst = -1;
    time = std::mktime(&parts);
    return time != static_cast<std::time_t>(-1);
}

}  // namespace

SignInGate::SignInGate(const SignInGateServices& services, Clock now)
    : services_(services), now_(std::move(now)) {}

bool SignInGate::IsSignedIn() const {
    const std::wstring base = services_.config ? services_.config->serverAddress : std::wstring();
    return services_.signInTable().IsSignedIn(base);
}

bool SignInGate::SignIn(bool signedIn) const {
    return services_.signInTable().ShowSignIn() ? IsSignedIn() : signedIn;
}

bool SignInGate::Pass() {
    bool signedIn = IsSignedIn();
    bool passed = false;
    switch (ShowWelcome(true, -1)) {
        case kSignIn:
            signedIn = SignIn(signedIn);
            passed = signedIn;
            break;
        case kSignUp:
            passed = services_.signInTable().HasWindowOnMainWindow();
            break;
        case kCancel:
            passed = false;
            break;
        default:
            passed = true;
            break;
    }
    if (passed && !signedIn)
        passed = SignIn(signedIn);
    return passed;
}

int SignInGate::ShowWelcome(bool welcomeStep, int minDays) {
    HostApi& host = services_.host;
    const bool signedIn = IsSignedIn();
    const std::time_t now = now_();
    const std::wstring nowText = FromUtf8(FormatTime(LocalTime(now), kStampFormat));
    const wchar_t* section = kPluginPreferencesSection;
    const wchar_t* stampKey = welcomeStep ? kWelcomeKey : kLastTimeKey;

    if (!signedIn && welcomeStep) {
        host.HostPrefSetString(section, kWelcomeKey, nowText.c_str());
    } else {
        HostWide stored(host);
        if (!welcomeStep) {
            host.HostPrefGetString(section, kWelcomeKey, stored);
            if (!stored.Text().empty())
                return kNothingShown;
        }
        host.HostPrefGetString(section, stampKey, stored);
        const std::wstring stamp = stored.Text();
        if (!stamp.empty()) {
            if (minDays < 1)
                return kNothingShown;
            std::time_t last = 0;
            if (ParseStamp(stamp, last) && (now - last) / kSecondsPerDay < minDays)
                return kNothingShown;
        }
        host.HostPrefSetString(section, stampKey, nowText.c_str());
    }
    const HostWindow parent = host.HostAppGetMainWindow();
    if (welcomeStep)
        return services_.platform.ShowWelcomeDialog(parent, host.HostAppIsChannelPackage() != 0);
    return services_.platform.ShowInfoDialog(parent);
}
