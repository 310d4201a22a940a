// The plug-in's two documents that come from outside: the configuration file "brevan.config"
// (first byte even) and the service document its page address is read from (first byte odd).
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "attached_plugin.h"
#include "config/brevan_config.h"
#include "config/service_config.h"
#include "fake_host.h"
#include "logging/async_logger.h"

namespace {

namespace fs = std::filesystem;

void ReadConfiguration(std::string_view text) {
    FakeHost host;  // a fresh user data folder of its own
    fs::create_directories(host.userData / "sblm.io");
    std::ofstream(host.userData / "sblm.io" / "brevan.config", std::ios::binary | std::ios::trunc)
        << text;
    try {
        BrevanConfig config(host, nullptr, L"/fuzz/plugin.tpi");
        std::wstring url;
        config.GetCustomUrl(url);
    } catch (const ConfigError&) {
    }
}

void ReadServiceDocument(std::string_view text) {
    static FakeHost* host = new FakeHost();
    static AttachedPlugin* plugin = [] {
        auto* made = new AttachedPlugin(*host);
        made->app.ImportTables();
        made->app.Init();
        return made;
    }();
    FakePlatform* platform = &plugin->platform;
    ServiceConfig& service = *plugin->app.serviceConfig;
    platform->httpBodies[service.DocumentAddress()] = std::string(text);
    platform->httpRequests.clear();
    service.Load();
    std::wstring value;
    service.GetValue(ServiceConfig::kPageTemplate, value);
    service.GetValue(ServiceConfig::kServiceDomain, value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool quiet = [] {
        AsyncLogger::Instance().Discard();
        return true;
    }();
    (void)quiet;
    if (size < 1)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    if (data[0] % 2 == 0)
        ReadConfiguration(text);
    else
        ReadServiceDocument(text);
    return 0;
}
