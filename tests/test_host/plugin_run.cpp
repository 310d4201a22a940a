#include "plugin_run.h"

#include <fstream>

#include "bridge_checks.h"
#include "host_api_tables.h"
#include "plugin_loader.h"
#include "record_hooks.h"

namespace testhost {
namespace {

const HostFrame kMainFrame = reinterpret_cast<HostFrame>(0x2000);

// The sample document: two pages of text on a 612 x 792 page. Its file's bytes stand for the PDF
// the editor "opened"; only their size is read.
SampleDocument OpenSample(ConsoleHost& host) {
    SampleDocument sample;
    sample.path = host.userData / "contract.pdf";
    std::ofstream(sample.path, std::ios::binary) << "%PDF-1.7\n"
                                                 << std::string(1200, ' ') << "\n%%EOF\n";
    sample.size = std::filesystem::file_size(sample.path);
    FakeDoc doc = FileDoc(sample.path.wstring());
    doc.pages.resize(2);
    doc.pages[0].lines = {{L"Contract between Ana Lind and Nightjar Ltd"},
                          {L"Phone 555-0100, ana@example.com"}};
    doc.pages[1].lines = {{L"Signed by Ana Lind"}};
    for (FakePage& page : doc.pages)
        page.mediaBox = page.visible = NdxRect{0, 0, 612, 792};
    sample.doc = host.OpenDocument(std::move(doc));
    return sample;
}

void CheckLoad(const pdfhost::PluginLoader& loader, CheckReport& report) {
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
}

void CheckMainFrame(ConsoleHost& host, CheckReport& report) {
    const FakeRibbonNode* button = host.Find(
        kMainFrame, {L"Ribbon_Category_Protect", L"Protect_Panel_Redaction", L"Sablemark"});
    bool entries = button != nullptr && button->children.size() == 3;
    for (const wchar_t* name : {L"AutoRedaction", L"BatchRedact", L"Profile"}) {
        const FakeRibbonNode* entry = button != nullptr ? button->Child(name) : nullptr;
        entries = entries && entry != nullptr && entry->execute != nullptr;
    }
    report.Require("main frame: the ribbon's three entries with their procedures", entries);
    report.Require("main frame: a task pane registered and the page channel connected",
                   host.paneRecords.size() == 1 && host.Connected());
}

void CheckOpenEvents(ConsoleHost& host, CheckReport& report) {
    std::string names;
    for (const Json::Value& event : host.TakeEvents())
        names += event["name"].asString() + " ";
    report.Require("opening a document: its events reach the page in order",
                   names == "ev-doc-before-open ev-doc-open-success ev-doc-activate ", names);
}

}  // namespace

void RunPlugin(const std::filesystem::path& plugin, CheckReport& report) {
    ConsoleHost host;
    // The account server the plug-in asks for its service document: a local port that refuses
    // at once.
    host.loginTable = true;
    host.loginServer = L"http://127.0.0.1:9";
    host.account.hasUser = false;
    pdfhost::TableManager tables;
    RegisterHostApiTables(tables);
    tables.Activate();
    const ServedHostApi served(host);

    pdfhost::PluginLoader loader({});
    loader.LoadFiles({plugin}, {kMainFrame});
    CheckLoad(loader, report);
    CheckMainFrame(host, report);

    const SampleDocument sample = OpenSample(host);
    CheckOpenEvents(host, report);
    RunBridgeChecks(host, sample, report);

    loader.FrameClosing(kMainFrame);
    loader.UnloadAll({});
    report.Require("unload: the event records are withdrawn", host.docEventRecords.empty());
    report.Require("library unload: the page channel released and every resource freed",
                   !host.Connected() && host.liveResources == 0,
                   "resources left " + std::to_string(host.liveResources));
}

}  // namespace testhost
