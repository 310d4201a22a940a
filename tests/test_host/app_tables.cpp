// The application: its facts, documents, event records, preferences, plug-in settings, resources
// and extension tables.
#include <algorithm>

#include "engine_tables.h"

namespace testhost {
namespace {

using hostops::Op;

// The one main window and its frame.
const HostWindow kMainWindow = reinterpret_cast<HostWindow>(0x1000);

using SettingKey = std::pair<std::wstring, std::wstring>;

SettingKey KeyOf(const wchar_t* section, const wchar_t* key) {
    return {TextOf(section), TextOf(key)};
}

void RegisterFacts(pdfhost::TableManager& tables) {
    tables.Register<Op::HostAppGetName>(
        [](HostByteString out) { Serve([&](MemoryEngine& e) { SetBytes(e, out, "TestHost"); }); });
    tables.Register<Op::HostAppGetType>(
        [](HostByteString out) { Serve([&](MemoryEngine& e) { SetBytes(e, out, "console"); }); });
    tables.Register<Op::HostAppGetVersion>(
        [](HostWideString out) { Serve([&](MemoryEngine& e) { SetWide(e, out, L"1.0.0"); }); });
    tables.Register<Op::HostAppGetLanguage>(
        [](HostWideString out) { Serve([&](MemoryEngine& e) { SetWide(e, out, e.language); }); });
    tables.Register<Op::HostAppGetInterfaceLanguage>(
        [](HostWideString out) { Serve([&](MemoryEngine& e) { SetWide(e, out, e.language); }); });
    tables.Register<Op::HostAppGetUserDataFolder>([](HostWideString out) {
        Serve([&](MemoryEngine& e) { SetWide(e, out, e.userData.wstring()); });
    });
    tables.Register<Op::HostAppGetMainWindow>([] { return kMainWindow; });
    tables.Register<Op::HostAppReportUsage>(
        [](HostWideString, HostWideString, HostWideString, HostWideString, HostWideString,
           HostWideString, HostWideString, HostWideString, HostWideString, HostWideString,
           HostWideString, int) { Serve([](MemoryEngine& e) { ++e.usageReports; }); });
}

void RegisterDocuments(pdfhost::TableManager& tables) {
    tables.Register<Op::HostAppGetDocCount>(
        [] { return Serve(0, [](MemoryEngine& e) { return static_cast<int>(e.open.size()); }); });
    tables.Register<Op::HostAppGetDocByIndex>([](int index) {
        return Serve<HostDoc>(nullptr, [&](MemoryEngine& e) -> HostDoc {
            if (index < 0 || static_cast<std::size_t>(index) >= e.open.size())
                return nullptr;
            return e.open[static_cast<std::size_t>(index)];
        });
    });
    tables.Register<Op::HostAppGetActiveDoc>(
        [] { return Serve<HostDoc>(nullptr, [](MemoryEngine& e) { return e.active; }); });
    tables.Register<Op::HostAppActivateDoc>([](HostDoc doc) {
        Serve([&](MemoryEngine& e) {
            if (e.DocumentOf(doc) == nullptr || e.active == doc)
                return;
            e.active = doc;
            e.FireDocHook<HostDocHook>(kDocEventActivate, doc);
        });
    });
}

void RegisterEventRecords(pdfhost::TableManager& tables) {
    tables.Register<Op::HostAppRegisterDocEvents>([](HostDocEventRecord* record) {
        Serve([&](MemoryEngine& e) {
            if (record != nullptr)
                e.docEventRecords.push_back(record);
        });
    });
    tables.Register<Op::HostAppUnregisterDocEvents>([](HostDocEventRecord* record) {
        Serve([&](MemoryEngine& e) { std::erase(e.docEventRecords, record); });
    });
    tables.Register<Op::HostAppRegisterAppEvents>([](HostAppEventRecord* record) {
        Serve([&](MemoryEngine& e) {
            if (record != nullptr)
                e.appEventRecords.push_back(record);
        });
    });
    tables.Register<Op::HostAppRegisterPane>([](HostPaneRecord* record) {
        Serve([&](MemoryEngine& e) {
            if (record != nullptr)
                e.paneRecords.push_back(record);
        });
    });
}

void RegisterSettings(pdfhost::TableManager& tables) {
    tables.Register<Op::HostPrefSetInt>([](const wchar_t* section, const wchar_t* key, int value) {
        Serve([&](MemoryEngine& e) { e.intPreferences[KeyOf(section, key)] = value; });
    });
    tables.Register<Op::HostPrefGetInt>([](const wchar_t* section, const wchar_t* key) {
        return Serve(0, [&](MemoryEngine& e) {
            const auto found = e.intPreferences.find(KeyOf(section, key));
            return found != e.intPreferences.end() ? found->second : 0;
        });
    });
    tables.Register<Op::HostPrefSetString>(
        [](const wchar_t* section, const wchar_t* key, const wchar_t* value) {
            Serve([&](MemoryEngine& e) { e.preferences[KeyOf(section, key)] = TextOf(value); });
        });
    tables.Register<Op::HostPrefGetString>(
        [](const wchar_t* section, const wchar_t* key, HostWideString out) {
            Serve([&](MemoryEngine& e) {
                const auto found = e.preferences.find(KeyOf(section, key));
                SetWide(e, out, found != e.preferences.end() ? found->second : std::wstring());
            });
        });
    tables.Register<Op::HostPluginSettingSet>(
        [](const wchar_t* section, const wchar_t* key, const wchar_t* value) {
            Serve([&](MemoryEngine& e) { e.pluginSettings[KeyOf(section, key)] = TextOf(value); });
        });
    tables.Register<Op::HostPluginSettingGet>([](const wchar_t* section, const wchar_t* key,
                                                 HostWideString out, const wchar_t* fallback) {
        Serve([&](MemoryEngine& e) {
            const auto found = e.pluginSettings.find(KeyOf(section, key));
            SetWide(e, out, found != e.pluginSettings.end() ? found->second : TextOf(fallback));
        });
    });
}

void RegisterResources(pdfhost::TableManager& tables) {
    tables.Register<Op::HostResourcesNew>([](const wchar_t*) {
        return Serve<HostResources>(nullptr, [](MemoryEngine& e) {
            ++e.liveResources;
            return e.resources.Emplace(0);
        });
    });
    tables.Register<Op::HostResourcesDestroy>([](HostResources resources) {
        Serve([&](MemoryEngine& e) {
            if (e.resources.Erase(resources))
                --e.liveResources;
        });
    });
    tables.Register<Op::HostResourcesSetLanguage>([](HostResources resources, int language) {
        Serve([&](MemoryEngine& e) {
            if (int* value = e.resources.Find(resources))
                *value = language;
        });
    });
    // The language id of English (United States).
    tables.Register<Op::HostResourcesGetLanguage>([] { return 0x0409; });
}

void RegisterExtensions(pdfhost::TableManager& tables) {
    tables.Register<Op::HostExtensionFind>([](const char* name, int version) {
        return Serve<HostExtTable>(nullptr, [&](MemoryEngine& e) -> HostExtTable {
            return name != nullptr ? e.extensions.Find(name, version) : nullptr;
        });
    });
    tables.Register<Op::HostExtensionGetFunction>([](HostExtTable table, int index) {
        return Serve<HostFunction>(
            nullptr, [&](MemoryEngine& e) { return e.extensions.Function(table, index); });
    });
}

}  // namespace

void OfferLoginServer(MemoryEngine& engine) {
    engine.extensions.Register<hostops::ExtOp::LoginGetServerAddress>([](HostWideString out) {
        Serve([&](MemoryEngine& e) { SetWide(e, out, e.accountServer); });
    });
}

void RegisterAppTables(pdfhost::TableManager& tables) {
    RegisterFacts(tables);
    RegisterDocuments(tables);
    RegisterEventRecords(tables);
    RegisterSettings(tables);
    RegisterResources(tables);
    RegisterExtensions(tables);
}

}  // namespace testhost
