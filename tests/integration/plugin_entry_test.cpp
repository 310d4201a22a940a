// The library's entry as a host meets it: PlugInMain, the handshake and the registration, their
// version and language gates, the order of the calls the plug-in makes, and what it exports;
// then, loaded in pdfhost, the log its configuration can turn on.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include "host/host_ops.h"
#include "plugin_host_fixture.h"

namespace {

using ::testing::HasSubstr;

std::vector<std::string> g_calls;
std::wstring g_language = L"en-US";
HostRegistrationFn g_registration = nullptr;
const HostUiRecord* g_ui = nullptr;
HostPluginCallback g_export = nullptr;

void Called(const std::string& call) {
    g_calls.push_back(call);
}

std::wstring& Wide(HostWideString s) {
    return *reinterpret_cast<std::wstring*>(s);
}

template <hostops::Op op, typename Function>
std::tuple<uint32_t, uint32_t, HostFunction> Entry(Function* function) {
    return {hostops::OpTraits<op>::category, hostops::OpTraits<op>::selector,
            reinterpret_cast<HostFunction>(function)};
}

// The few host functions the entry needs: wide strings and the language.
HostFunction Lookup(uint32_t category, uint32_t selector, uint32_t pluginId) {
    EXPECT_EQ(pluginId, 77u);
    using hostops::Op;
    const std::tuple<uint32_t, uint32_t, HostFunction> functions[] = {
        Entry<Op::HostWideStringNew>(
            +[] { return reinterpret_cast<HostWideString>(new std::wstring()); }),
        Entry<Op::HostWideStringDelete>(+[](HostWideString s) { delete &Wide(s); }),
        Entry<Op::HostWideStringData>(+[](HostWideString s) { return Wide(s).c_str(); }),
        Entry<Op::HostWideStringCompareText>(
            +[](HostWideString s, const wchar_t* text) { return Wide(s).compare(text); }),
        Entry<Op::HostAppGetLanguage>(+[](HostWideString out) { Wide(out) = g_language; }),
    };
    for (const auto& [c, s, function] : functions) {
        if (c == category && s == selector)
            return function;
    }
    return nullptr;
}

HostTableManager g_manager{sizeof(HostTableManager), &Lookup};

using Shake = HostHandshake*;
using Reg = HostRegistration*;
using Callback = HostPluginCallback;

HostHandshake MakeHandshake() {
    HostHandshake h{};
    h.size = sizeof h;
    h.getTableManager = [] {
        Called("getTableManager");
        return &g_manager;
    };
    h.getPluginId = [](Shake) {
        Called("getPluginId");
        return 77u;
    };
    h.setRegistrationCallback = [](Shake, HostRegistrationFn fn) {
        Called("setRegistrationCallback");
        g_registration = fn;
    };
    h.setSdkVersion = [](Shake, uint32_t v) { Called("setSdkVersion " + std::to_string(v)); };
    h.setVersionText = [](Shake, const char* text) {
        Called(std::string("setVersionText ") + text);
    };
    return h;
}

HostRegistration MakeRegistration() {
    HostRegistration r{};
    r.size = sizeof r;
    r.setPluginName = [](Reg, const char* internal, const char* shortName) {
        Called(std::string("setPluginName ") + internal + " " + shortName);
    };
    r.setExportCallback = [](Reg, Callback fn) {
        Called("setExportCallback");
        g_export = fn;
    };
    r.setImportCallback = [](Reg, Callback) { Called("setImportCallback"); };
    r.setInitCallback = [](Reg, Callback) { Called("setInitCallback"); };
    r.setUiRecord = [](Reg, const HostUiRecord* ui) {
        Called("setUiRecord");
        g_ui = ui;
    };
    r.setUnloadCallback = [](Reg, Callback) { Called("setUnloadCallback"); };
    return r;
}

const std::string kLibrary = std::string(BREVAN_PLUGIN_DIR) + "/TarvoSablemark.tpi";

TEST(PluginEntryTest, HandshakeAndRegistrationWithTheirGates) {
    void* library = dlopen(kLibrary.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    auto plugInMain = reinterpret_cast<PlugInMainFn>(dlsym(library, "PlugInMain"));
    ASSERT_NE(plugInMain, nullptr);

    uint32_t version = 0;
    HostHandshakeFn handshake = nullptr;
    EXPECT_EQ(plugInMain(&version, &handshake), 1);
    EXPECT_EQ(version, 0x10000u);
    ASSERT_NE(handshake, nullptr);

    HostHandshake data = MakeHandshake();
    EXPECT_EQ(handshake(0x20000, &data), 0);
    EXPECT_TRUE(g_calls.empty());
    EXPECT_EQ(handshake(0x10000, &data), 1);
    EXPECT_EQ(g_calls,
              (std::vector<std::string>{"getTableManager", "getPluginId", "setRegistrationCallback",
                                        "setSdkVersion 184549376", "setVersionText 2026.1.0"}));
    ASSERT_NE(g_registration, nullptr);

    HostRegistration record = MakeRegistration();
    g_calls.clear();
    EXPECT_EQ(g_registration(0x10001, &record), 0);
    g_language = L"en-GB";
    EXPECT_EQ(g_registration(0x10000, &record), 0);
    EXPECT_TRUE(g_calls.empty());

    g_language = L"en-US";
    EXPECT_EQ(g_registration(0x10000, &record), 1);
    EXPECT_EQ(g_calls, (std::vector<std::string>{
                           "setPluginName TarvoInnerPluginTarvoSablemark TarvoSablemark",
                           "setExportCallback", "setImportCallback", "setInitCallback",
                           "setUiRecord", "setUnloadCallback"}));
    EXPECT_EQ(g_export(), 1);
    ASSERT_NE(g_ui, nullptr);
    EXPECT_EQ(g_ui->size, sizeof(HostUiRecord));
    for (std::size_t word : {1, 2, 3, 4, 5, 6, 8})
        EXPECT_NE(g_ui->word(word), nullptr) << word;
    EXPECT_EQ(g_ui->word(7), nullptr);
    dlclose(library);
}

TEST(PluginEntryTest, ExportsOnlyItsEntryAndCarriesNoPdfEngine) {
    void* library = dlopen(kLibrary.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_NE(dlsym(library, "PlugInMain"), nullptr);
    EXPECT_EQ(dlsym(library, "fz_new_context_imp"), nullptr);
    EXPECT_EQ(dlsym(library, "_ZN6Brevan4InitEv"), nullptr);  // internals stay hidden
    dlclose(library);
    std::ifstream in(kLibrary, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    EXPECT_EQ(bytes.find("fz_new_context"), std::string::npos);
    EXPECT_EQ(bytes.find("libmupdf"), std::string::npos);
}

TEST_F(PluginHostTest, LoggerWritesRequestsAndRepliesWhenTheConfigurationAsks) {
    const auto logs = folder / "logs";
    WriteConfig(R"({"logger_output": true, "logger_path": ")" + logs.string() + R"("})");
    Start();
    Post(R"(["base","getCurrentDoc","","x"])");
    Post(R"(["base","isCurrentDocModified",{"a":1},"y"])");
    Post(R"(["base","getDocMetadata",{"a":1},"z"])");
    Line(Json::Value(Json::objectValue));  // a line the session cannot use; the host goes on
    // Unloads the plug-in; the logger's queue is written at library unload.
    Line(Object({{"host", "quit"}}));

    std::string all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(logs)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream in(entry.path());
        all.append(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    EXPECT_THAT(all, HasSubstr("[INFO] Get Dispatch getCurrentDoc input:  "));
    EXPECT_THAT(all, HasSubstr("[INFO] Dispatch isCurrentDocModified  output : "
                               "{\"data\":null,\"ret\":300001,\"uuid\":\"y\"}"));
    // A command that takes no parameters drops them unseen; one that takes them logs them.
    EXPECT_THAT(all, HasSubstr("Get Dispatch isCurrentDocModified input:  \n"));
    EXPECT_THAT(all, HasSubstr("Get Dispatch getDocMetadata input:  {\"a\":1}"));
}

}  // namespace
