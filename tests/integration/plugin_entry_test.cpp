// The library's entry as a host meets it: PlugInMain, the handshake and the registration, their
// version and language gates, and the order of the calls the plug-in makes.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/host_ops.h"

namespace {

struct Recorder {
    std::vector<std::string> calls;
    std::wstring language = L"en-US";
    HostRegistrationFn registration = nullptr;
    const HostUiRecord* ui = nullptr;
    HostPluginCallback exportFn = nullptr;
};
Recorder g_rec;

// The few host functions the entry needs: wide strings and the language.
HostWideString WideNew() {
    return reinterpret_cast<HostWideString>(new std::wstring());
}
void WideDelete(HostWideString s) {
    delete reinterpret_cast<std::wstring*>(s);
}
const wchar_t* WideData(HostWideString s) {
    return reinterpret_cast<std::wstring*>(s)->c_str();
}
int WideCompare(HostWideString s, const wchar_t* text) {
    return reinterpret_cast<std::wstring*>(s)->compare(text);
}
void GetLanguage(HostWideString out) {
    *reinterpret_cast<std::wstring*>(out) = g_rec.language;
}

template <hostops::Op op>
bool Is(uint32_t category, uint32_t selector) {
    return hostops::OpTraits<op>::category == category &&
           hostops::OpTraits<op>::selector == selector;
}

HostFunction Lookup(uint32_t category, uint32_t selector, uint32_t pluginId) {
    EXPECT_EQ(pluginId, 77u);
    using hostops::Op;
    if (Is<Op::HostWideStringNew>(category, selector))
        return reinterpret_cast<HostFunction>(&WideNew);
    if (Is<Op::HostWideStringDelete>(category, selector))
        return reinterpret_cast<HostFunction>(&WideDelete);
    if (Is<Op::HostWideStringData>(category, selector))
        return reinterpret_cast<HostFunction>(&WideData);
    if (Is<Op::HostWideStringCompareText>(category, selector))
        return reinterpret_cast<HostFunction>(&WideCompare);
    if (Is<Op::HostAppGetLanguage>(category, selector))
        return reinterpret_cast<HostFunction>(&GetLanguage);
    return nullptr;
}

HostTableManager g_manager{sizeof(HostTableManager), &Lookup};

HostHandshake MakeHandshake() {
    HostHandshake h{};
    h.size = sizeof h;
    h.getTableManager = [] {
        g_rec.calls.push_back("getTableManager");
        return &g_manager;
    };
    h.getPluginId = [](HostHandshake*) {
        g_rec.calls.push_back("getPluginId");
        return 77u;
    };
    h.setRegistrationCallback = [](HostHandshake*, HostRegistrationFn fn) {
        g_rec.calls.push_back("setRegistrationCallback");
        g_rec.registration = fn;
    };
    h.setSdkVersion = [](HostHandshake*, uint32_t v) {
        g_rec.calls.push_back("setSdkVersion " + std::to_string(v));
    };
    h.setVersionText = [](HostHandshake*, const char* text) {
        g_rec.calls.push_back(std::string("setVersionText ") + text);
    };
    return h;
}

HostRegistration MakeRegistration() {
    HostRegistration r{};
    r.size = sizeof r;
    r.setPluginName = [](HostRegistration*, const char* internal, const char* shortName) {
        g_rec.calls.push_back(std::string("setPluginName ") + internal + " " + shortName);
    };
    r.setExportCallback = [](HostRegistration*, HostPluginCallback fn) {
        g_rec.calls.push_back("setExportCallback");
        g_rec.exportFn = fn;
    };
    r.setImportCallback = [](HostRegistration*, HostPluginCallback) {
        g_rec.calls.push_back("setImportCallback");
    };
    r.setInitCallback = [](HostRegistration*, HostPluginCallback) {
        g_rec.calls.push_back("setInitCallback");
    };
    r.setUiRecord = [](HostRegistration*, const HostUiRecord* ui) {
        g_rec.calls.push_back("setUiRecord");
        g_rec.ui = ui;
    };
    r.setUnloadCallback = [](HostRegistration*, HostPluginCallback) {
        g_rec.calls.push_back("setUnloadCallback");
    };
    return r;
}

TEST(PluginEntryTest, HandshakeAndRegistrationWithTheirGates) {
    const std::string path = std::string(BREVAN_PLUGIN_DIR) + "/TarvoSablemark.tpi";
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
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
    EXPECT_TRUE(g_rec.calls.empty());
    EXPECT_EQ(handshake(0x10000, &data), 1);
    EXPECT_EQ(g_rec.calls,
              (std::vector<std::string>{"getTableManager", "getPluginId", "setRegistrationCallback",
                                        "setSdkVersion 184549376", "setVersionText 2026.1.0"}));
    ASSERT_NE(g_rec.registration, nullptr);

    HostRegistration record = MakeRegistration();
    g_rec.calls.clear();
    EXPECT_EQ(g_rec.registration(0x10001, &record), 0);
    g_rec.language = L"en-GB";
    EXPECT_EQ(g_rec.registration(0x10000, &record), 0);
    EXPECT_TRUE(g_rec.calls.empty());

    g_rec.language = L"en-US";
    EXPECT_EQ(g_rec.registration(0x10000, &record), 1);
    EXPECT_EQ(g_rec.calls, (std::vector<std::string>{
                               "setPluginName TarvoInnerPluginTarvoSablemark TarvoSablemark",
                               "setExportCallback", "setImportCallback", "setInitCallback",
                               "setUiRecord", "setUnloadCallback"}));
    EXPECT_EQ(g_rec.exportFn(), 1);
    ASSERT_NE(g_rec.ui, nullptr);
    EXPECT_EQ(g_rec.ui->size, sizeof(HostUiRecord));
    for (std::size_t word : {1, 2, 3, 4, 5, 6, 8})
        EXPECT_NE(g_rec.ui->word(word), nullptr) << word;
    EXPECT_EQ(g_rec.ui->word(7), nullptr);
    dlclose(library);
}

}  // namespace
