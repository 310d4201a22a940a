// FakeHost: an in-memory editor for unit tests of the plug-in logic. Documents are plain records
// whose pages list the types of their content objects; strings, preferences and event
// registrations behave as a host's would.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "app/platform_services.h"
#include "fake_platform.h"      // tests/support
#include "host_api_defaults.h"  // tests/support

struct FakePage {
    std::vector<int> objects;  // NdxPageObjectType of each content object
    bool available = true;     // false: the host cannot give this page
    bool parsed = false;
};

struct FakeDoc {
    std::wstring path;
    bool modified = false;
    bool temporary = false;
    bool hasPdf = true;
    bool faulty = false;  // asking whether it is modified throws, as a failing host call may
    bool xfa = false;     // its catalogue's form has an XFA entry
    uint32_t permissions = kHostPermPrint | kHostPermModify | kHostPermCopy | kHostPermAnnotate;
    std::optional<std::map<std::string, std::string>> info = std::map<std::string, std::string>{};
    std::vector<FakePage> pages;
};

// A document of one empty page stored at `path`.
inline FakeDoc FileDoc(std::wstring path) {
    FakeDoc doc;
    doc.path = std::move(path);
    doc.pages.resize(1);
    return doc;
}

// The host's account behind the "login" table, when FakeHost::loginTable is set.
struct FakeAccount {
    bool signedIn = false;  // LoginGetState answers 2 when set, else 0
    // LoginGetToken's token by base address; an address without one fails with an empty token.
    std::map<std::wstring, std::wstring> tokens;
    bool hasUser = true;  // LoginGetUserInfo succeeds
    std::wstring email, userId, firstName, lastName;
    int signInAnswer = 0;                     // what LoginShowSignIn returns
    bool signInSignsIn = true;                // a non-zero answer signs the user in
    std::vector<std::wstring> stateRequests;  // base addresses asked of LoginGetState
    std::vector<std::wstring> tokenRequests;  // base addresses asked of LoginGetToken
    HostLoginDomainCallback domainCallback = nullptr;
};

// One HostAppReportUsage call: its texts, and whether the unused arguments were null.
struct FakeUsageReport {
    std::wstring name, type, details, module, version, extra1, extra2;
    bool gapsNull = false;
    int last = -1;
};

class FakeHost : public HostApiDefaults {
  public:
    FakeHost();
    ~FakeHost() override;

    // Opens a document and makes it the active one; the handle stays valid until the test ends.
    HostDoc Open(FakeDoc doc);
    // Closes a document as the editor does: the closing hooks run, then another becomes active.
    void Close(HostDoc doc);
    FakeDoc& Doc(HostDoc doc) { return *reinterpret_cast<FakeDoc*>(doc); }

    std::filesystem::path userData;
    std::wstring language = L"en-US";
    HostDoc active = nullptr;
    std::vector<HostDocEventRecord*> docEventRecords;
    std::vector<HostAppEventRecord*> appEventRecords;
    std::vector<std::pair<std::string, int>> paneCalls;
    std::vector<std::wstring> messages;
    int liveStrings = 0;
    int liveResources = 0;
    std::wstring loginServer;  // answered by LoginGetServerAddress when `loginTable` is found
    bool loginTable = false;
    FakeAccount account;
    // Host preferences and plug-in settings by (section, key).
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> preferences;
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> pluginSettings;
    std::vector<FakeUsageReport> usageReports;

    // Strings
    HostWideString HostWideStringNew() override;
    void HostWideStringDelete(HostWideString str) override;
    int HostWideStringGetLength(HostWideString str) override;
    int HostWideStringCompareText(HostWideString str, const wchar_t* text) override;
    void HostWideStringSet(HostWideString str, const wchar_t* text) override;
    const wchar_t* HostWideStringData(HostWideString str) override;
    HostByteString HostByteStringNew() override;
    void HostByteStringDelete(HostByteString str) override;
    int HostByteStringGetLength(HostByteString str) override;
    const char* HostByteStringData(HostByteString str) override;

    // Application
    void HostAppGetUserDataFolder(HostWideString out) override;
    void HostAppGetLanguage(HostWideString out) override;
    void HostAppGetVersion(HostWideString out) override;
    HostResources HostResourcesNew(const wchar_t* modulePath) override;
    void HostResourcesDestroy(HostResources resources) override;
    HostDoc HostAppGetActiveDoc() override { return active; }
    int HostAppGetDocCount() override { return static_cast<int>(open_.size()); }
    HostDoc HostAppGetDocByIndex(int index) override;
    void HostAppRegisterDocEvents(HostDocEventRecord* record) override;
    void HostAppUnregisterDocEvents(HostDocEventRecord* record) override;
    void HostAppRegisterAppEvents(HostAppEventRecord* record) override;
    void HostAppShowPane(const char* paneName, int show) override;
    void HostMessageShow(const wchar_t* text, int, int, const wchar_t*, int, int) override;
    HostExtTable HostExtensionFind(const char* name, int version) override;
    void LoginGetServerAddress(HostExtTable table, HostWideString out) override;
    int LoginGetToken(HostExtTable table, const wchar_t* baseAddress, const wchar_t* text,
                      HostWideString token) override;
    int LoginGetUserInfo(HostExtTable table, const wchar_t* baseAddress, HostWideString email,
                         HostWideString userId, HostWideString firstName,
                         HostWideString lastName) override;
    int LoginGetState(HostExtTable table, const wchar_t* baseAddress) override;
    int LoginShowSignIn(HostExtTable table, const wchar_t* text, int flags) override;
    void LoginRegisterDomainCallback(HostExtTable table, HostLoginDomainCallback callback) override;
    void HostAppGetName(HostByteString out) override;
    void HostAppGetType(HostByteString out) override;
    void HostPrefGetString(const wchar_t* section, const wchar_t* key, HostWideString out) override;
    void HostPluginSettingSet(const wchar_t* section, const wchar_t* key,
                              const wchar_t* value) override;
    void HostPluginSettingGet(const wchar_t* section, const wchar_t* key, HostWideString out,
                              const wchar_t* defaultValue) override;
    void HostAppReportUsage(HostWideString name, HostWideString unused1, HostWideString unused2,
                            HostWideString type, HostWideString unused3, HostWideString unused4,
                            HostWideString details, HostWideString module, HostWideString version,
                            HostWideString extra1, HostWideString extra2, int last) override;

    // Documents
    NdxDoc HostDocGetPdfDoc(HostDoc doc) override;
    int HostDocIsModified(HostDoc doc) override {
        if (Doc(doc).faulty)
            throw std::bad_alloc();
        return Doc(doc).modified ? 1 : 0;
    }
    int HostDocIsTemporary(HostDoc doc) override { return Doc(doc).temporary ? 1 : 0; }
    uint32_t HostDocGetPermissions(HostDoc doc) override { return Doc(doc).permissions; }
    void HostDocGetFilePath(HostDoc doc, HostWideString out) override;
    HostPageView HostDocGetPageView(HostDoc doc, int pageIndex) override;
    NdxPage HostPageViewGetPage(HostPageView page) override;
    int NDXDocGetPageCount(NdxDoc doc) override;
    NdxObject NDXDocGetInfo(NdxDoc doc) override;
    void NDXDictGetString(NdxObject dict, const char* key, HostByteString out) override;
    int NDXPageIsParsed(NdxPage page) override;
    void NDXPageParse(NdxPage page, NdxParseOptions options) override;
    int NDXPageCountObjects(NdxPage page) override;
    NdxPosition NDXPageGetFirstObjectPos(NdxPage page) override;
    NdxPageObject NDXPageGetNextObject(NdxPage page, NdxPosition* position) override;
    int NDXPageObjectGetType(NdxPageObject object) override;

  private:
    template <typename Hook, typename... Args>
    void FireDocHook(std::size_t word, Args... args);

    std::vector<std::unique_ptr<FakeDoc>> docs_;
    std::vector<HostDoc> open_;
};
