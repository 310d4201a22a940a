// The plug-in's one usage event, "Sable Mark Load": it has been loaded for the first time at this
// version. It goes out through the host's own reporting function, its details as a JSON text.
#pragma once

#include <json/value.h>

#include <string>

class HostApi;
class ServiceConfig;
class SignInTable;

// What the report says of the running system.
struct SystemFacts {
    std::string name;      // "osVersion"
    std::string language;  // "osLang"

    // The facts of the system this process runs on; each platform layer defines it.
    static SystemFacts OfThisSystem();
};

// The details: the host's name, version and type, the system's name and language, the fixed
// "os", and "userID" when a user is signed in to the account server of the service document.
// `service` may be null: then nobody counts as signed in.
Json::Value LoadUsageDetails(HostApi& host, const SignInTable& login, ServiceConfig* service,
                             const SystemFacts& system);

// Sends the load event through HostAppReportUsage.
void ReportLoadUsage(HostApi& host, const SignInTable& login, ServiceConfig* service,
                     const std::wstring& version, const SystemFacts& system);

// Sends the load event unless the plug-in setting "bLoad" already holds this version, then stores
// the version there: one report per installed version and user.
void ReportFirstLoadOfVersion(HostApi& host, const SignInTable& login, ServiceConfig* service,
                              const std::wstring& version, const SystemFacts& system);
