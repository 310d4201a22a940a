#include "usage_report.h"

#include "account/sign_in_table.h"
#include "account/system_language.h"
#include "account/system_name.h"
#include "app/brevan.h"
#include "bridge/json_text.h"
#include "config/brevan_config.h"
#include "config/service_config.h"
#include "host/host_string.h"
#include "util/utf.h"

namespace {

constexpr const wchar_t* kEventName = L"Sable Mark Load";
constexpr const wchar_t* kEventType = L"event";
constexpr const wchar_t* kModule = L"PDF Sable Mark";
constexpr const char* kOs = "Win PDF Editor";
constexpr const wchar_t* kLoadedVersionKey = L"bLoad";
constexpr const wchar_t* kAccountServerKey = L"url@qvd_domain";

// The id of the user signed in to the service document's account server; empty when there is
// none or it cannot be had.
std::wstring SignedInUserId(Brevan& app) {
    std::wstring domain;
    if (!app.serviceConfig || app.serviceConfig->GetValue(kAccountServerKey, domain) != 0)
        return {};
    const SignInTable login = SignInTable::Of(app);
    std::wstring token;
    login.GetToken(domain, token);
    if (token.empty())
        return {};
    AccountUser user;
    login.GetUserInfo(domain, user);
    return user.userId;
}

}  // namespace

SystemFacts SystemFacts::OfThisSystem() {
    return SystemFacts{SystemName(&ReadWholeFile), SystemLanguage(&ReadEnvironment)};
}

Json::Value LoadUsageDetails(Brevan& app, const SystemFacts& system) {
    HostApi& host = app.host();
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
    if (const std::wstring userId = SignedInUserId(app); !userId.empty())
        details["userID"] = ToUtf8(userId);
    return details;
}

void ReportLoadUsage(Brevan& app, const SystemFacts& system) {
    HostApi& host = app.host();
    HostWide name(host, kEventName);
    HostWide type(host, kEventType);
    HostWide details(host, FromUtf8(WriteJson(LoadUsageDetails(app, system))));
    HostWide module(host, kModule);
    HostWide version(host, app.config ? app.config->pluginVersion : std::wstring());
    HostWide extra1(host);
    HostWide extra2(host);
    host.HostAppReportUsage(name, nullptr, nullptr, type, nullptr, nullptr, details, module,
                            version, extra1, extra2, 0);
}

void ReportFirstLoadOfVersion(Brevan& app, const SystemFacts& system) {
    if (!app.config)
        return;
    const std::wstring& version = app.config->pluginVersion;
    HostWide stored(app.host());
    app.host().HostPluginSettingGet(Brevan::kSettingsSection, kLoadedVersionKey, stored, L"");
    if (!stored.Text().empty() && stored.Text() == version)
        return;
    ReportLoadUsage(app, system);
    app.host().HostPluginSettingSet(Brevan::kSettingsSection, kLoadedVersionKey, version.c_str());
}
