#include "plugin_run.h"

#include <fstream>

#include "bridge_checks.h"
#include "engine_tables.h"
#include "page_channel.h"
#include "page_client.h"
#include "plugin_loader.h"
#include "record_hooks.h"

namespace testhost {
namespace {

const HostFrame kMainFrame = reinterpret_cast<HostFrame>(0x2000);
constexpr const wchar_t* kPluginSettings = L"plugins\\Installed\\TarvoSablemark";

// The sample file: its bytes stand for a PDF the engine has "opened"; only its size is read.
SampleDocument WriteSample(const std::filesystem::path& folder) {
    SampleDocument sample;
    sample.path = folder / "contract.pdf";
    std::ofstream(sample.path, std::ios::binary) << "%PDF-1.7\n"
                                                 << std::string(1200, ' ') << "\n%%EOF\n";
    sample.size = std::filesystem::file_size(sample.path);
    return sample;
}

std::vector<std::vector<std::wstring>> SampleText() {
    return {{L"Contract between Ana Lind and Nightjar Ltd", L"Phone 555-0100, ana@example.com"},
            {L"Signed by Ana Lind"}};
}

void Register(pdfhost::TableManager& tables) {
    RegisterStringTables(tables);
    RegisterAppTables(tables);
    RegisterRibbonTables(tables);
    RegisterDocumentTables(tables);
    RegisterTextTables(tables);
    RegisterObjectTables(tables);
    tables.Activate();
}

void CheckLoad(const pdfhost::PluginLoader& loader, MemoryEngine& engine, CheckReport& report) {
    report.Require("PlugInMain, handshake, registration, export, import and init all succeed",
                   loader.Plugins().size() == 1, "the loader tells why on standard error");
    const pdfhost::LoadedPlugin& plugin = *loader.Plugins().front();
    report.Require("handshake: SDK version and version text",
                   plugin.sdkVersion == kHostSdkVersion && plugin.versionText == "2026.1.0",
                   plugin.versionText);
    report.Require("registration: the plug-in's names",
                   plugin.internalName == "TarvoInnerPluginTarvoSablemark" &&
                       plugin.shortName == "TarvoSablemark",
                   plugin.internalName + " / " + plugin.shortName);
    report.Require("registration: export, import, init and unload callbacks",
                   plugin.exportFn != nullptr && plugin.importFn != nullptr &&
                       plugin.initFn != nullptr && plugin.unloadFn != nullptr);
    report.Require("registration: the interface record of nine words with both frame hooks",
                   plugin.ui.size == sizeof(HostUiRecord) &&
                       pdfhost::HookAt(plugin.ui, kUiMainFrameCreated) != nullptr &&
                       pdfhost::HookAt(plugin.ui, kUiMainFrameClosing) != nullptr,
                   "size " + std::to_string(plugin.ui.size));
    report.Require("init registers one document and one application event record",
                   engine.docEventRecords.size() == 1 && engine.appEventRecords.size() == 1);
    const auto loaded = engine.pluginSettings.find({kPluginSettings, L"bLoad"});
    report.Require("init reports the first load of this version and remembers it",
                   engine.usageReports == 1 && loaded != engine.pluginSettings.end() &&
                       !loaded->second.empty());
}

void CheckMainFrame(MemoryEngine& engine, const PageChannel& channel, CheckReport& report) {
    const HostRibbonItem category = engine.FindChild(engine.ribbonBar, L"Ribbon_Category_Protect");
    const HostRibbonItem panel = engine.FindChild(category, L"Protect_Panel_Redaction");
    const HostRibbonItem button = engine.FindChild(panel, L"Sablemark");
    bool entries = button != nullptr && engine.ribbon.Find(button)->children.size() == 3;
    for (const wchar_t* name : {L"AutoRedaction", L"BatchRedact", L"Profile"}) {
        const RibbonNode* entry = engine.ribbon.Find(engine.FindChild(button, name));
        entries = entries && entry != nullptr && entry->execute != nullptr;
    }
    report.Require("main frame: the ribbon's three entries with their procedures", entries);
    report.Require("main frame: a task pane registered and the page channel connected",
                   engine.paneRecords.size() == 1 && channel.Connected());
}

void CheckOpenEvents(PageClient& page, CheckReport& report) {
    std::string names;
    for (const Json::Value& event : page.TakeEvents())
        names += event["name"].asString() + " ";
    report.Require("opening a document: its events reach the page in order",
                   names == "ev-doc-before-open ev-doc-open-success ev-doc-activate ", names);
}

}  // namespace

void RunPlugin(const std::filesystem::path& plugin, const std::filesystem::path& workFolder,
               CheckReport& report) {
    const SampleDocument written = WriteSample(workFolder);
    std::filesystem::create_directories(workFolder / "user");
    MemoryEngine engine(workFolder / "user");
    pdfhost::TableManager tables;
    Register(tables);
    OfferLoginServer(engine);
    PageChannel channel(engine.extensions);
    PageClient page(channel);

    pdfhost::PluginLoader loader({});
    loader.LoadFiles({plugin}, {kMainFrame});
    CheckLoad(loader, engine, report);
    CheckMainFrame(engine, channel, report);

    SampleDocument sample = written;
    sample.doc = engine.Open(sample.path.wstring(), SampleText());
    CheckOpenEvents(page, report);
    RunBridgeChecks(engine, page, sample, report);

    loader.FrameClosing(kMainFrame);
    loader.UnloadAll({});
    report.Require("unload: the event records are withdrawn", engine.docEventRecords.empty());
    report.Require("library unload: the page channel released and every resource freed",
                   !channel.Connected() && engine.liveResources == 0,
                   "resources left " + std::to_string(engine.liveResources));
}

}  // namespace testhost
