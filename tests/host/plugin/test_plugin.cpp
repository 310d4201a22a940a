// A plug-in for the loader tests. It writes each step of its life, in order, to the host
// preference ("testplugin", <its kind>) as "step;step;...", through the host's own tables, so the
// tests can read what happened even after the library is gone.
#include <stdexcept>
#include <string>

#include "host_ops.h"

namespace {

HostTableManager* g_tables = nullptr;
uint32_t g_pluginId = 0;
std::wstring g_pending;  // steps before the tables are known
HostDocEventRecord g_docEvents;

template <hostops::Op op, typename... Args>
auto Call(Args... args) {
    using Traits = hostops::OpTraits<op>;
    auto* fn = reinterpret_cast<typename Traits::Fn*>(
        g_tables->lookup(Traits::category, Traits::selector, g_pluginId));
    return fn(args...);
}

std::wstring Read(const wchar_t* key) {
    using hostops::Op;
    HostWideString text = Call<Op::HostWideStringNew>();
    Call<Op::HostPrefGetString>(L"testplugin", key, text);
    std::wstring value = Call<Op::HostWideStringData>(text);
    Call<Op::HostWideStringDelete>(text);
    return value;
}

void Log(const std::wstring& step) {
    g_pending += step + L";";
    if (g_tables == nullptr)
        return;
    const std::wstring log = Read(TEST_PLUGIN_NAME) + g_pending;
    g_pending.clear();
    Call<hostops::Op::HostPrefSetString>(L"testplugin", TEST_PLUGIN_NAME, log.c_str());
}

void OnDidOpen(void*, HostDoc) {
    Log(L"did-open");
#ifdef TEST_PLUGIN_KIND_throwing
    throw std::runtime_error("hook failed");
#endif
}
void OnFrameCreated(HostFrame) {
    Log(L"frame-created");
#ifdef TEST_PLUGIN_KIND_throwing
    throw std::runtime_error("hook failed");
#endif
}
void OnFrameClosing(HostFrame) {
    Log(L"frame-closing");
}

int Export() {
    Log(L"export");
    return 1;
}

int Import() {
    Log(L"import");
    return 1;
}

int Init() {
    using hostops::Op;
    Log(L"init");
    HostWideString path = Call<Op::HostWideStringNew>();
    Call<Op::HostAppGetPluginFilePath>(path);
    Call<Op::HostPrefSetString>(L"testplugin", TEST_PLUGIN_NAME L"-path",
                                Call<Op::HostWideStringData>(path));
    Call<Op::HostWideStringDelete>(path);
    g_docEvents.setWord(kDocEventClientData, &g_docEvents);
    g_docEvents.setWord(kDocEventDidOpen, reinterpret_cast<void*>(&OnDidOpen));
    Call<Op::HostAppRegisterDocEvents>(&g_docEvents);
#ifdef TEST_PLUGIN_KIND_failing_init
    Call<Op::HostMessageShow>(L"cannot start", 0, 0, L"", 0, 0);
    return 0;
#else
    return 1;
#endif
}

int Unload() {
    Call<hostops::Op::HostAppUnregisterDocEvents>(&g_docEvents);
    Log(L"unload");
    return 1;
}

HostUiRecord MakeUiRecord() {
    HostUiRecord record;
    record.setWord(kUiMainFrameCreated, reinterpret_cast<void*>(&OnFrameCreated));
    record.setWord(kUiMainFrameClosing, reinterpret_cast<void*>(&OnFrameClosing));
    return record;
}

int Registration(uint32_t hostVersion, HostRegistration* record) {
    using hostops::Op;
    HostWideString language = Call<Op::HostWideStringNew>();
    Call<Op::HostAppGetLanguage>(language);
    const bool english = Call<Op::HostWideStringCompareText>(language, L"en-US") == 0;
    Call<Op::HostWideStringDelete>(language);
    if (hostVersion != kHostInterfaceVersion || !english) {
        Log(L"refused");
        return 0;
    }
    static const HostUiRecord ui = MakeUiRecord();
    record->setPluginName(record, "TestPluginInner", "TestPlugin");
    record->setExportCallback(record, &Export);
    record->setImportCallback(record, &Import);
    record->setInitCallback(record, &Init);
    record->setUiRecord(record, &ui);
    record->setUnloadCallback(record, &Unload);
    Log(L"register");
    return 1;
}

[[maybe_unused]] int Handshake(uint32_t hostVersion, HostHandshake* data) {
    if (hostVersion != kHostInterfaceVersion)
        return 0;
    g_tables = data->getTableManager();
    g_pluginId = data->getPluginId(data);
    data->setRegistrationCallback(data, &Registration);
    data->setSdkVersion(data, kHostSdkVersion);
    data->setVersionText(data, "9.8.7");
    Log(L"handshake");
    return 1;
}

// Runs when the library is unloaded; the host is still there.
struct LibraryLifetime {
    ~LibraryLifetime() {
        if (g_tables != nullptr)
            Log(L"library-unloaded");
    }
} g_lifetime;

}  // namespace

#ifndef TEST_PLUGIN_KIND_no_entry
extern "C" __attribute__((visibility("default"))) int PlugInMain(uint32_t* version,
                                                                 HostHandshakeFn* entry) {
    Log(L"main");
#ifdef TEST_PLUGIN_KIND_throwing_main
    throw std::runtime_error("cannot start");
#endif
    *version = kHostInterfaceVersion;
    *entry = &Handshake;
    return 1;
}
#endif
