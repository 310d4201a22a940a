// BrevanConfig: what the plug-in knows of its environment — the account server, the host's version
// and language, its own version, and the optional developers' file "brevan.config" in the service
// folder under the host's user data folder.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "host/host_api.h"
#include "host/owned_resources.h"

// A configuration key holds a value of the wrong type; the plug-in must not start.
class ConfigError : public std::runtime_error {
  public:
    explicit ConfigError(const std::string& key);
    const std::string& key() const { return key_; }

  private:
    std::string key_;
};

// Deployment values.
namespace deployment {
extern const wchar_t* const kProductionServer;
extern const wchar_t* const kSecondServer;
extern const wchar_t* const kDemoServer;
extern const wchar_t* const kServiceFolder;  // seven characters, shared with the log folder
}  // namespace deployment

class BrevanConfig {
  public:
    // Reads the file and fixes the environment. `loginTable` may be null (no sign-in table).
    // Throws ConfigError when a boolean key holds a value of another JSON type.
    BrevanConfig(HostApi& host, HostExtTable loginTable, const std::wstring& modulePath);
    ~BrevanConfig();
    BrevanConfig(const BrevanConfig&) = delete;
    BrevanConfig& operator=(const BrevanConfig&) = delete;

    // Sets `preproduction` for the address, then stores it.
    void SetServerAddress(const std::wstring& address);
    // Leaves `out` alone unless the file holds a non-empty `custom_url` text.
    void GetCustomUrl(std::wstring& out) const;
    // The sign-in table's server (its first function, then its second); the production server
    // when both are empty or the table is missing.
    std::wstring GetServerAddressFromLogin() const;

    // <user data>/<service folder>
    const std::wstring& serviceFolder() const { return serviceFolder_; }
    // The folder of the log files when `logger_path` is empty.
    std::wstring DefaultLogFolder() const;

    // The resource handle made for this library, for string lookups; null before construction.
    static HostResources CurrentResources();

    OwnedResources resources;
    std::wstring platformName;
    std::wstring hostVersion;
    std::wstring language;
    std::wstring apiVersion;
    std::wstring apiFileName;
    std::wstring serverAddress;
    bool preproduction = false;
    bool loggerOutput = false;
    bool batchDlgShow = false;
    // `insecure_tls`: HTTP requests accept any server certificate (pre-production servers).
    bool insecureTls = false;
    Json::Value root;
    std::wstring loggerPath;
    std::wstring pluginVersion;
    int32_t loggerSize = 30;
    std::wstring fileName = L"brevan.config";

  private:
    bool ReadBool(const char* key, bool fallback) const;

    HostApi& host_;
    HostExtTable loginTable_;
    std::wstring serviceFolder_;
};
