#include "usage_report.h"

#include "account/sign_in_table.h"
#include "bridge/json_text.h"
#include "config/plugin_sections.h"
#include "config/service_config.h"
#include "host/host_string.h"
#include "util/utf.h"

namespace {

constexpr const wchar_t* kEventName = L"Sable Mark Load";
constexpr const wchar_t* kEventType = L"event";
constexpr const wchar_t* kModule = L"PDF Sable Mark";
constexpr const char* kOs = "Win PDF Editor";
constexpr const wchar_t* kLoadedVersionKey = L"bLoad";

// The id of the user signed in to the service document's account server; empty when there is
// none or it cannot be had.
std::wstring SignedInUserId(const SignInTable& login, ServiceConfig* service) {
    std::wstring domain;
    if (service == nullptr || service->GetValue(ServiceConfig::kAccountServer, domain) != 0)
        return {};
    std::wstring token;
    login.GetToken(domain, token);
    if (token.empty())
        return {};
    AccountUser user;
    login.GetUserInfo(domain, user);
    return user.userId;
}

}  // namespace

Json::Value LoadUsageDetails(HostApi& host, const SignInTable& login, ServiceConfig* service,
                             const SystemFacts& system) {
    HostBytes name(host);
    host.HostAppGetName(name);
    HostWide version(host);
    host.HostAppGetVersion(version);
    HostBytes type(host);
    host.HostAppGetType(type);

    Json::Value details(Json::objectValue);
    details["appName"] = name.Bytes();
    details["appVersion"] = ToUtf8(version.Text());
    details["appType"] = type.Bytes();
    details["osVersion"] = system.name;
    details["osLang"] = system.language;
    details["os"] = kOs;
    if (const std::wstring userId = SignedInUserId(login, service); !userId.empty())
        details["userID"] = ToUtf8(userId);
    return details;
}

void ReportLoadUsage(HostApi& host, const SignInTable& login, ServiceConfig* service,
                     const std::wstring& pluginVersion, const SystemFacts& system) {
    HostWide name(host, kEventName);
    HostWide type(host, kEventType);
    HostWide details(host, FromUtf8(WriteJson(LoadUsageDetails(host, login, service, system))));
    HostWide module(host, kModule);
    HostWide version(host, pluginVersion);
    HostWide extra1(host);
    HostWide extra2(host);
    host.HostAppReportUsage(name, nullptr, nullptr, type, nullptr, nullptr, details, module,
                            version, extra1, extra2, 0);
}

void ReportFirstLoadOfVersion(HostApi& host, const SignInTable& login, ServiceConfig* service,
                              const std::wstring& version, const SystemFacts& system) {
    HostWide stored(host);
    host.HostPluginSettingGet(kPluginSettingsSection, kLoadedVersionKey, stored, L"");
    if (!stored.Text().empty() && stored.Text() == version)
        return;
    ReportLoadUsage(host, login, service, version, system);
    host.HostPluginSettingSet(kPluginSettingsSection, kLoadedVersionKey, version.c_str());
}
