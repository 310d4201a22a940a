// The application: its name, version, folders and language, resources, main window, the
// document list, event records, preferences, plug-in settings and messages.
#include <QMainWindow>

#include "language_ids.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

constexpr const char* kHostName = "pdfhost";
constexpr const char* kHostType = "editor";
constexpr const wchar_t* kHostVersion = L"1.0.0";

void AppGetName(HostByteString out) {
    Guarded([&](HostApp& app) { SetBytes(app, out, kHostName); });
}

void AppGetVersion(HostWideString out) {
    Guarded([&](HostApp& app) { SetWide(app, out, kHostVersion); });
}

void AppGetType(HostByteString out) {
    Guarded([&](HostApp& app) { SetBytes(app, out, kHostType); });
}

void AppGetUserDataFolder(HostWideString out) {
    Guarded([&](HostApp& app) {
        SetWideUtf8(app, out, app.ProfileFolder().UserDataFolder().string());
    });
}

// The .tpi file of the plug-in that calls.
void AppGetPluginFilePath(HostWideString out) {
    Guarded([&](HostApp& app) {
        const LoadedPlugin* plugin = app.CallingPlugin();
        SetWideUtf8(app, out, plugin != nullptr ? plugin->path.string() : std::string());
    });
}

void AppGetLanguage(HostWideString out) {
    Guarded([&](HostApp& app) { SetWideUtf8(app, out, app.Options().language); });
}

// ---- Resources

HostResources ResourcesNew(const wchar_t* modulePath) {
    return Guarded<HostResources>(nullptr, [&](HostApp& app) {
        return app.Values().resources.Emplace(
            ResourcesValue{modulePath != nullptr ? modulePath : L"", 0});
    });
}

void ResourcesDestroy(HostResources resources) {
    Guarded([&](HostApp& app) { app.Values().resources.Erase(resources); });
}

void ResourcesSetLanguage(HostResources resources, int language) {
    Guarded([&](HostApp& app) {
        if (ResourcesValue* value = app.Values().resources.Find(resources)) {
            value->language = language;
        }
    });
}

int ResourcesGetLanguage() {
    return Guarded(0, [](HostApp& app) { return LanguageIdOf(app.Options().language); });
}

// ---- Main window and documents

// While the plug-ins are told of a main window that opens or closes, that window is the current
// one; otherwise the first.
HostWindow AppGetMainWindow() {
    return Guarded<HostWindow>(nullptr, [](HostApp& app) {
        QWidget* window = app.AnnouncedFrame() != nullptr ? app.AnnouncedFrame() : app.MainWindow();
        return reinterpret_cast<HostWindow>(window);
    });
}

int AppGetDocCount() {
    return Guarded(0, [](HostApp& app) { return static_cast<int>(app.Documents().Tabs().size()); });
}

HostDoc AppGetDocByIndex(int index) {
    return Guarded<HostDoc>(nullptr, [&](HostApp& app) -> HostDoc {
        const std::vector<HostDocument*> tabs = app.Documents().Tabs();
        if (index < 0 || static_cast<std::size_t>(index) >= tabs.size())
            return nullptr;
        return tabs[static_cast<std::size_t>(index)]->Handle();
    });
}

// While the active document closes, the tab that takes its place counts as active (none when
// it was the last), so that closing hooks see what remains.
HostDoc AppGetActiveDoc() {
    return Guarded<HostDoc>(nullptr, [](HostApp& app) -> HostDoc {
        const HostDocument* active = app.Documents().Active();
        if (active != nullptr && active->IsClosing())
            active = app.Documents().NeighbourTab(*active);
        return active != nullptr && !active->IsClosing() ? active->Handle() : nullptr;
    });
}

void AppActivateDoc(HostDoc doc) {
    Guarded([&](HostApp& app) {
        if (HostDocument* document = FindDocument(app, doc))
            app.Activate(*document);
    });
}

// ---- Event records

void AppRegisterDocEvents(HostDocEventRecord* record) {
    Guarded(
        [&](HostApp& app) { app.Events().AddDocRecord(record, TableManager::CallingPlugin()); });
}

void AppUnregisterDocEvents(HostDocEventRecord* record) {
    Guarded([&](HostApp& app) { app.Events().RemoveDocRecord(record); });
}

void AppRegisterAppEvents(HostAppEventRecord* record) {
    Guarded(
        [&](HostApp& app) { app.Events().AddAppRecord(record, TableManager::CallingPlugin()); });
}

// ---- Preferences and plug-in settings

void PrefSetInt(const wchar_t* section, const wchar_t* key, int value) {
    Guarded([&](HostApp& app) { app.Preferences().SetInt(Utf8Of(section), Utf8Of(key), value); });
}

void PrefSetString(const wchar_t* section, const wchar_t* key, const wchar_t* value) {
    Guarded([&](HostApp& app) {
        app.Preferences().SetString(Utf8Of(section), Utf8Of(key), Utf8Of(value));
    });
}

int PrefGetInt(const wchar_t* section, const wchar_t* key) {
    return Guarded(0, [&](HostApp& app) {
        return app.Preferences().GetInt(Utf8Of(section), Utf8Of(key)).value_or(0);
    });
}

void PrefGetString(const wchar_t* section, const wchar_t* key, HostWideString out) {
    Guarded([&](HostApp& app) {
        SetWideUtf8(app, out,
                    app.Preferences().GetString(Utf8Of(section), Utf8Of(key)).value_or(""));
    });
}

void PluginSettingSet(const wchar_t* section, const wchar_t* key, const wchar_t* value) {
    Guarded([&](HostApp& app) {
        app.PluginSettings().SetString(Utf8Of(section), Utf8Of(key), Utf8Of(value));
    });
}

void PluginSettingGet(const wchar_t* section, const wchar_t* key, HostWideString out,
                      const wchar_t* defaultValue) {
    Guarded([&](HostApp& app) {
        const auto stored = app.PluginSettings().GetString(Utf8Of(section), Utf8Of(key));
        SetWideUtf8(app, out, stored.has_value() ? *stored : Utf8Of(defaultValue));
    });
}

// ---- Messages

void MessageShow(const wchar_t* text, int, int, const wchar_t* title, int, int) {
    Guarded([&](HostApp& app) { app.ShowMessage(Utf8Of(text), Utf8Of(title)); });
}

}  // namespace

void RegisterAppTables(TableManager& tables) {
    tables.Register<Op::HostAppGetName>(&AppGetName);
    tables.Register<Op::HostAppGetVersion>(&AppGetVersion);
    tables.Register<Op::HostAppGetType>(&AppGetType);
    tables.Register<Op::HostAppGetUserDataFolder>(&AppGetUserDataFolder);
    tables.Register<Op::HostAppGetPluginFilePath>(&AppGetPluginFilePath);
    tables.Register<Op::HostAppGetLanguage>(&AppGetLanguage);
    tables.Register<Op::HostAppGetInterfaceLanguage>(&AppGetLanguage);
    tables.Register<Op::HostResourcesNew>(&ResourcesNew);
    tables.Register<Op::HostResourcesDestroy>(&ResourcesDestroy);
    tables.Register<Op::HostResourcesSetLanguage>(&ResourcesSetLanguage);
    tables.Register<Op::HostResourcesGetLanguage>(&ResourcesGetLanguage);
    tables.Register<Op::HostAppGetMainWindow>(&AppGetMainWindow);
    tables.Register<Op::HostAppGetDocCount>(&AppGetDocCount);
    tables.Register<Op::HostAppGetDocByIndex>(&AppGetDocByIndex);
    tables.Register<Op::HostAppGetActiveDoc>(&AppGetActiveDoc);
    tables.Register<Op::HostAppActivateDoc>(&AppActivateDoc);
    tables.Register<Op::HostAppRegisterDocEvents>(&AppRegisterDocEvents);
    tables.Register<Op::HostAppUnregisterDocEvents>(&AppUnregisterDocEvents);
    tables.Register<Op::HostAppRegisterAppEvents>(&AppRegisterAppEvents);
    tables.Register<Op::HostPrefSetInt>(&PrefSetInt);
    tables.Register<Op::HostPrefSetString>(&PrefSetString);
    tables.Register<Op::HostPrefGetInt>(&PrefGetInt);
    tables.Register<Op::HostPrefGetString>(&PrefGetString);
    tables.Register<Op::HostPluginSettingSet>(&PluginSettingSet);
    tables.Register<Op::HostPluginSettingGet>(&PluginSettingGet);
    tables.Register<Op::HostMessageShow>(&MessageShow);
}

}  // namespace pdfhost
