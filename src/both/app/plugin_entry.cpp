// The library's entry: PlugInMain, the handshake with the host, the registration of the plug-in's
// callbacks, and the process-wide objects they reach.
#include <optional>

#include "app/brevan.h"
#include "host/hft_host_api.h"
#include "host/host_string.h"
#include "logging/async_logger.h"

// The library's one exported name: listed in the Windows library's .def file, and the only name
// the Linux version script keeps.
#ifdef _WIN32
#define BREVAN_EXPORT extern "C" __declspec(dllexport)
#else
#define BREVAN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

constexpr const char* kVersionText = "2026.1.0";
constexpr const char* kInternalName = "TarvoInnerPluginTarvoSablemark";
constexpr const char* kShortName = "TarvoSablemark";
constexpr const wchar_t* kRequiredLanguage = L"en-US";

// Declared in this order so that the application object goes before the host functions and the
// platform it uses.
HostTableManager* g_hostTable = nullptr;
uint32_t g_pluginId = 0;
std::optional<HftHostApi> g_host;
std::unique_ptr<PlatformServices> g_platform;
Brevan g_app;

int BREVAN_HOSTCALL ExportTables() {
    return 1;
}
int BREVAN_HOSTCALL ImportTables() {
    return g_app.ImportTables();
}
int BREVAN_HOSTCALL Init() {
    return g_app.Init();
}
int BREVAN_HOSTCALL Unload() {
    return g_app.Unload();
}
void BREVAN_HOSTCALL DoNothing(HostFrame) {}
void BREVAN_HOSTCALL OnMainFrameCreated(HostFrame frame) {
    g_app.OnMainFrameCreated(frame);
}
void BREVAN_HOSTCALL OnMainFrameClosing(HostFrame frame) {
    g_app.OnMainFrameClosing(frame);
}

const HostUiRecord& UiRecord() {
    static const HostUiRecord record = [] {
        HostUiRecord r;
        for (std::size_t word : {1, 2, 3, 4, 6})
            r.setWord(word, HookWord<HostFrameHook>(&DoNothing));
        r.setWord(kUiMainFrameCreated, HookWord<HostFrameHook>(&OnMainFrameCreated));
        r.setWord(kUiMainFrameClosing, HookWord<HostFrameHook>(&OnMainFrameClosing));
        return r;
    }();
    return record;
}

bool HostLanguageIsSupported() {
    HostWide language(*g_host);
    g_host->HostAppGetLanguage(language);
    return g_host->HostWideStringCompareText(language, kRequiredLanguage) == 0;
}

int BREVAN_HOSTCALL Register(uint32_t hostVersion, HostRegistration* record) {
    if (hostVersion != kHostInterfaceVersion || record == nullptr || !g_host)
        return 0;
    if (!HostLanguageIsSupported())
        return 0;
    record->setPluginName(record, kInternalName, kShortName);
    record->setExportCallback(record, &ExportTables);
    record->setImportCallback(record, &ImportTables);
    record->setInitCallback(record, &Init);
    record->setUiRecord(record, &UiRecord());
    record->setUnloadCallback(record, &Unload);
    return 1;
}

int BREVAN_HOSTCALL Handshake(uint32_t hostVersion, HostHandshake* data) {
    if (hostVersion != kHostInterfaceVersion || data == nullptr)
        return 0;
    g_hostTable = data->getTableManager();
    g_pluginId = data->getPluginId(data);
    data->setRegistrationCallback(data, &Register);
    data->setSdkVersion(data, kHostSdkVersion);
    data->setVersionText(data, kVersionText);

    g_host.emplace(g_hostTable, g_pluginId, [](const char* operation) {
        AsyncLogger::Instance().Log(kLogError, "Host function % is missing", operation);
    });
    g_platform = CreatePlatformServices();
    g_app.Attach(*g_host, *g_platform);
    g_app.pluginId = g_pluginId;
    return 1;
}

}  // namespace

BREVAN_EXPORT int BREVAN_HOSTCALL PlugInMain(uint32_t* version, HostHandshakeFn* entry) {
    if (version != nullptr)
        *version = kHostInterfaceVersion;
    if (entry != nullptr)
        *entry = &Handshake;
    return 1;
}
