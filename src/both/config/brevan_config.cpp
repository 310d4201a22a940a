#include "brevan_config.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "bridge/json_text.h"
#include "host/host_string.h"
#include "util/utf.h"
#include "util/wide_path.h"

namespace deployment {
const wchar_t* const kProductionServer = BREVAN_SERVER_PRODUCTION;
const wchar_t* const kSecondServer = BREVAN_SERVER_SECOND;
const wchar_t* const kDemoServer = BREVAN_SERVER_DEMO;
const wchar_t* const kServiceFolder = BREVAN_SERVICE_FOLDER;
}  // namespace deployment

namespace {

HostResources g_resources = nullptr;

// The boolean keys the plug-in reads; a value of another type stops the start.
constexpr const char* kBooleanKeys[] = {"preproduction_env", "logger_output", "batchdlg_show",
                                        "insecure_tls"};

bool IsInteger(const Json::Value& v) {
    return v.type() == Json::intValue || v.type() == Json::uintValue;
}

// Null and real values leave the default; a boolean key must otherwise hold a boolean.
bool HoldsWrongTypeForBool(const Json::Value& v) {
    return !v.isNull() && v.type() != Json::realValue && v.type() != Json::booleanValue;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return {};
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

ConfigError::ConfigError(const std::string& key)
    : std::runtime_error("The configuration key \"" + key +
                         "\" must hold true or false; the plug-in was not started."),
      key_(key) {}

HostResources BrevanConfig::CurrentResources() {
    return g_resources;
}

BrevanConfig::BrevanConfig(HostApi& host, HostExtTable loginTable, const std::wstring& modulePath)
    : host_(host), loginTable_(loginTable) {
    resources = OwnedResources(host_, host_.HostResourcesNew(modulePath.c_str()));
    if (resources) {
        host_.HostResourcesSetLanguage(resources.get(), host_.HostResourcesGetLanguage());
    }

    apiVersion = L"2.0.0.0";
    apiFileName = L"txdfApi.json";

    HostWide userData(host_);
    host_.HostAppGetUserDataFolder(userData);
    const std::filesystem::path folder =
        PathOfWide(userData.Text()) / PathOfWide(deployment::kServiceFolder);
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    serviceFolder_ = WideOfPath(folder);

    // A missing or broken file leaves `root` as the reader left it; the defaults stand.
    ParseJson(ReadFile(folder / PathOfWide(fileName)), root);
    if (root.isObject()) {
        for (const char* key : kBooleanKeys) {
            if (HoldsWrongTypeForBool(root[key]))
                throw ConfigError(key);
        }
    }

    SetServerAddress(GetServerAddressFromLogin());

    loggerOutput = ReadBool("logger_output", false);
    batchDlgShow = ReadBool("batchdlg_show", false);
    insecureTls = ReadBool("insecure_tls", false);
    if (root.isObject()) {
        const Json::Value& path = root["logger_path"];
        if (path.isString())
            loggerPath = FromUtf8(path.asString());
        const Json::Value& size = root["logger_size"];
        if (IsInteger(size) && size.isInt())
            loggerSize = size.asInt();
    }

    platformName = L"Win%20PDF%20Editor";
    HostWide version(host_);
    host_.HostAppGetVersion(version);
    hostVersion = version.Text();
    HostWide lang(host_);
    host_.HostAppGetLanguage(lang);
    language = lang.Text();

    pluginVersion = std::to_wstring(BREVAN_PLUGIN_VERSION_MAJOR) + L"." +
                    std::to_wstring(BREVAN_PLUGIN_VERSION_MINOR) + L"." +
                    std::to_wstring(BREVAN_PLUGIN_VERSION_PATCH) + L"." +
                    std::to_wstring(BREVAN_PLUGIN_VERSION_TWEAK);
    // Published last: a construction that throws leaves nothing behind.
    if (resources)
        g_resources = resources.get();
}

BrevanConfig::~BrevanConfig() {
    if (g_resources == resources.get())
        g_resources = nullptr;
}

bool BrevanConfig::ReadBool(const char* key, bool fallback) const {
    if (!root.isObject())
        return fallback;
    const Json::Value& value = root[key];
    return value.isBool() ? value.asBool() : fallback;
}

void BrevanConfig::SetServerAddress(const std::wstring& address) {
    const bool standard =
        address == deployment::kProductionServer || address == deployment::kSecondServer;
    preproduction = standard ? false : ReadBool("preproduction_env", false);
    serverAddress.clear();
    serverAddress = address;
}

void BrevanConfig::GetCustomUrl(std::wstring& out) const {
    if (!root.isObject())
        return;
    const Json::Value& url = root["custom_url"];
    if (url.isString() && !url.asString().empty())
        out = FromUtf8(url.asString());
}

std::wstring BrevanConfig::GetServerAddressFromLogin() const {
    if (loginTable_ != nullptr) {
        HostWide address(host_);
        host_.LoginGetServerAddress(loginTable_, address);
        std::wstring text = address.Text();
        if (text.empty()) {
            host_.LoginGetServerAddressFallback(loginTable_, address);
            text = address.Text();
        }
        if (!text.empty())
            return text;
    }
    return deployment::kProductionServer;
}

std::wstring BrevanConfig::DefaultLogFolder() const {
    return WideOfPath(PathOfWide(serviceFolder_) / "brevanlog");
}
