// Loading plug-ins: the order of their life steps, and plug-ins that are dropped.
#include <fstream>

#include "host_test_support.h"

namespace pdfhost::testing {
namespace {

// The test plug-ins are built beside pdfhost, in out/test-plugins.
std::filesystem::path BuiltPlugin(const std::string& kind) {
    return std::filesystem::path(PDFHOST_BINARY).parent_path().parent_path() / "test-plugins" /
           (kind + ".tpi");
}

class PluginLoading : public ::testing::Test {
  protected:
    // Copies the named test plug-ins into a fresh plug-in folder: each test loads its own copy.
    HostOptions WithPlugins(std::initializer_list<std::string> kinds,
                            std::string language = "en-US") {
        for (const auto& kind : kinds)
            std::filesystem::copy_file(BuiltPlugin(kind), plugins_ / (kind + ".tpi"));
        HostOptions options = OptionsOn(profile_.Path());
        options.plugins = plugins_.Path();
        options.language = std::move(language);
        return options;
    }

    // What a test plug-in wrote of its life, read as it wrote it.
    static std::string LifeOf(HostApp& app, const std::string& kind) {
        return app.Preferences().GetString("testplugin", kind).value_or("");
    }

    TempFolder profile_;
    TempFolder plugins_;
    TempFolder files_;
};

TEST_F(PluginLoading, APlugInGoesThroughItsLifeInOrder) {
    HostApp app(WithPlugins({"complete"}));
    EXPECT_EQ(app.LoadPlugins(), 1u);
    EXPECT_EQ(LifeOf(app, "complete"), "main;handshake;register;export;import;init;frame-created;");

    const LoadedPlugin& plugin = *app.Plugins().Plugins().front();
    EXPECT_EQ(plugin.versionText, "9.8.7");
    EXPECT_EQ(plugin.sdkVersion, kHostSdkVersion);
    EXPECT_EQ(plugin.internalName, "TestPluginInner");
    EXPECT_EQ(plugin.shortName, "TestPlugin");
    EXPECT_EQ(app.Preferences().GetString("testplugin", "complete-path"),
              (plugins_ / "complete.tpi").string());

    // Its document hooks are live while it is loaded.
    app.OpenDocument(WritePdf(files_, "a.pdf", ThreePages()));
    EXPECT_TRUE(LifeOf(app, "complete").ends_with("init;frame-created;did-open;"));

    app.UnloadPlugins();
    EXPECT_TRUE(
        LifeOf(app, "complete").ends_with("did-open;frame-closing;unload;library-unloaded;"))
        << LifeOf(app, "complete");
    EXPECT_TRUE(app.Plugins().Plugins().empty());
    EXPECT_EQ(app.Events().DocRecordCount(), 0u);
}

TEST_F(PluginLoading, ARegistrationRefusalDropsThePlugIn) {
    HostApp app(WithPlugins({"complete"}, "de-DE"));
    EXPECT_EQ(app.LoadPlugins(), 0u);
    EXPECT_EQ(LifeOf(app, "complete"), "main;handshake;refused;library-unloaded;");
}

TEST_F(PluginLoading, AFailedInitDropsThePlugInAndItsRecords) {
    HostApp app(WithPlugins({"failing_init", "complete"}));
    EXPECT_EQ(app.LoadPlugins(), 1u);
    EXPECT_EQ(app.Plugins().Plugins().front()->shortName, "TestPlugin");
    EXPECT_EQ(LifeOf(app, "failing_init"),
              "main;handshake;register;export;import;init;library-unloaded;");
    EXPECT_EQ(app.Events().DocRecordCount(), 1u);  // only the one of the plug-in that stays
    // Both export before either imports.
    EXPECT_EQ(LifeOf(app, "complete"), "main;handshake;register;export;import;init;frame-created;");
}

TEST_F(PluginLoading, APlugInThatThrowsIsDroppedOrContainedAndTheEditorGoesOn) {
    HostApp app(WithPlugins({"throwing_main", "throwing", "complete"}));
    EXPECT_EQ(app.LoadPlugins(), 2u);
    EXPECT_EQ(LifeOf(app, "throwing_main"), "");  // it never reached the host's tables
    const std::string path = WritePdf(files_, "a.pdf", ThreePages());
    app.OpenDocument(path);
    app.OpenDocument(WritePdf(files_, "b.pdf", ThreePages()));
    EXPECT_TRUE(LifeOf(app, "throwing").ends_with("frame-created;did-open;did-open;"));
    EXPECT_TRUE(LifeOf(app, "complete").ends_with("did-open;did-open;"));
    EXPECT_EQ(app.Documents().All().size(), 2u);
    app.UnloadPlugins();
}

TEST_F(PluginLoading, FilesThatAreNoPlugInsAreSkipped) {
    std::ofstream(plugins_ / "garbage.tpi") << "not a library";
    std::filesystem::create_directory(plugins_ / "folder.tpi");
    std::ofstream(plugins_ / "readme.txt") << "ignored";
    HostApp app(WithPlugins({"no_entry", "complete"}));
    EXPECT_EQ(app.LoadPlugins(), 1u);
    EXPECT_EQ(app.Plugins().Plugins().front()->path, plugins_ / "complete.tpi");
}

TEST_F(PluginLoading, AMissingFolderLoadsNothing) {
    HostOptions options = WithPlugins({});
    options.plugins = plugins_ / "missing";
    HostApp app(options);
    EXPECT_EQ(app.LoadPlugins(), 0u);
    EXPECT_NE(app.MainWindow(), nullptr);
}

}  // namespace
}  // namespace pdfhost::testing
