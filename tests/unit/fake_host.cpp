#include "fake_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "util/utf.h"

namespace {

std::wstring& W(HostWideString s) {
    return *reinterpret_cast<std::wstring*>(s);
}
std::string& B(HostByteString s) {
    return *reinterpret_cast<std::string*>(s);
}
FakePage& P(NdxPage page) {
    return *reinterpret_cast<FakePage*>(page);
}

std::filesystem::path FreshFolder() {
    static std::atomic<int> counter{0};
    std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) /
        ("fakehost-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

}  // namespace

FakeHost::FakeHost() : userData(FreshFolder()) {}

FakeHost::~FakeHost() {
    std::error_code ignored;
    std::filesystem::remove_all(userData, ignored);
}

template <typename Hook, typename... Args>
void FakeHost::FireDocHook(std::size_t word, Args... args) {
    const auto records = docEventRecords;
    for (HostDocEventRecord* record : records) {
        if (void* fn = record->word(word)) {
            reinterpret_cast<Hook>(fn)(record->word(kDocEventClientData), args...);
        }
    }
}

HostDoc FakeHost::Open(FakeDoc doc) {
    docs_.push_back(std::make_unique<FakeDoc>(std::move(doc)));
    auto handle = reinterpret_cast<HostDoc>(docs_.back().get());
    open_.push_back(handle);
    active = handle;
    FireDocHook<HostDocHook>(kDocEventDidOpen, handle);
    FireDocHook<HostDocHook>(kDocEventActivate, handle);
    return handle;
}

HostDoc FakeHost::HostAppGetDocByIndex(int index) {
    if (index < 0 || index >= static_cast<int>(open_.size()))
        return nullptr;
    return open_[static_cast<std::size_t>(index)];
}

void FakeHost::Close(HostDoc doc) {
    open_.erase(std::remove(open_.begin(), open_.end(), doc), open_.end());
    if (active == doc)
        active = open_.empty() ? nullptr : open_.back();
    FireDocHook<HostDocHook>(kDocEventClosing, doc);
}

HostWideString FakeHost::HostWideStringNew() {
    ++liveStrings;
    return reinterpret_cast<HostWideString>(new std::wstring());
}
void FakeHost::HostWideStringDelete(HostWideString str) {
    --liveStrings;
    delete &W(str);
}
int FakeHost::HostWideStringGetLength(HostWideString str) {
    return static_cast<int>(W(str).size());
}
int FakeHost::HostWideStringCompareText(HostWideString str, const wchar_t* text) {
    return W(str).compare(text);
}
void FakeHost::HostWideStringSet(HostWideString str, const wchar_t* text) {
    W(str) = text;
}
const wchar_t* FakeHost::HostWideStringData(HostWideString str) {
    return W(str).c_str();
}
HostByteString FakeHost::HostByteStringNew() {
    ++liveStrings;
    return reinterpret_cast<HostByteString>(new std::string());
}
void FakeHost::HostByteStringDelete(HostByteString str) {
    --liveStrings;
    delete &B(str);
}
int FakeHost::HostByteStringGetLength(HostByteString str) {
    return static_cast<int>(B(str).size());
}
const char* FakeHost::HostByteStringData(HostByteString str) {
    return B(str).c_str();
}

void FakeHost::HostAppGetUserDataFolder(HostWideString out) {
    W(out) = FromUtf8(userData.string());
}
void FakeHost::HostAppGetLanguage(HostWideString out) {
    W(out) = language;
}
void FakeHost::HostAppGetVersion(HostWideString out) {
    W(out) = L"1.2.3";
}
HostResources FakeHost::HostResourcesNew(const wchar_t*) {
    ++liveResources;
    return reinterpret_cast<HostResources>(new int(0));
}
void FakeHost::HostResourcesDestroy(HostResources resources) {
    --liveResources;
    delete reinterpret_cast<int*>(resources);
}
void FakeHost::HostAppRegisterDocEvents(HostDocEventRecord* record) {
    docEventRecords.push_back(record);
}
void FakeHost::HostAppUnregisterDocEvents(HostDocEventRecord* record) {
    docEventRecords.erase(std::remove(docEventRecords.begin(), docEventRecords.end(), record),
                          docEventRecords.end());
}
void FakeHost::HostAppRegisterAppEvents(HostAppEventRecord* record) {
    appEventRecords.push_back(record);
}
void FakeHost::HostAppShowPane(const char* paneName, int show) {
    paneCalls.emplace_back(paneName, show);
}
void FakeHost::HostMessageShow(const wchar_t* text, int, int, const wchar_t*, int, int) {
    messages.emplace_back(text);
}
HostExtTable FakeHost::HostExtensionFind(const char* name, int version) {
    if (loginTable && std::string(name) == "login" && version == 103) {
        return reinterpret_cast<HostExtTable>(this);
    }
    return nullptr;
}
void FakeHost::LoginGetServerAddress(HostExtTable, HostWideString out) {
    W(out) = loginServer;
}
int FakeHost::LoginGetToken(HostExtTable, const wchar_t* baseAddress, const wchar_t*,
                            HostWideString token) {
    account.tokenRequests.emplace_back(baseAddress);
    const auto found = account.tokens.find(baseAddress);
    W(token) = found != account.tokens.end() ? found->second : std::wstring();
    return found != account.tokens.end() ? 1 : 0;
}
int FakeHost::LoginGetUserInfo(HostExtTable, const wchar_t*, HostWideString email,
                               HostWideString userId, HostWideString firstName,
                               HostWideString lastName) {
    if (!account.hasUser)
        return 0;
    W(email) = account.email;
    W(userId) = account.userId;
    W(firstName) = account.firstName;
    W(lastName) = account.lastName;
    return 1;
}
int FakeHost::LoginGetState(HostExtTable, const wchar_t* baseAddress) {
    account.stateRequests.emplace_back(baseAddress);
    return account.signedIn ? 2 : 0;
}
int FakeHost::LoginShowSignIn(HostExtTable, const wchar_t*, int) {
    if (account.signInAnswer != 0 && account.signInSignsIn)
        account.signedIn = true;
    return account.signInAnswer;
}
void FakeHost::LoginRegisterDomainCallback(HostExtTable, HostLoginDomainCallback callback) {
    account.domainCallback = callback;
}
void FakeHost::HostAppGetName(HostByteString out) {
    B(out) = "FakeEditor";
}
void FakeHost::HostAppGetType(HostByteString out) {
    B(out) = "editor";
}
void FakeHost::HostPrefGetString(const wchar_t* section, const wchar_t* key, HostWideString out) {
    const auto found = preferences.find({section, key});
    W(out) = found != preferences.end() ? found->second : std::wstring();
}
void FakeHost::HostPluginSettingSet(const wchar_t* section, const wchar_t* key,
                                    const wchar_t* value) {
    pluginSettings[{section, key}] = value;
}
void FakeHost::HostPluginSettingGet(const wchar_t* section, const wchar_t* key, HostWideString out,
                                    const wchar_t* defaultValue) {
    const auto found = pluginSettings.find({section, key});
    W(out) = found != pluginSettings.end() ? found->second : std::wstring(defaultValue);
}
void FakeHost::HostAppReportUsage(HostWideString name, HostWideString unused1,
                                  HostWideString unused2, HostWideString type,
                                  HostWideString unused3, HostWideString unused4,
                                  HostWideString details, HostWideString module,
                                  HostWideString version, HostWideString extra1,
                                  HostWideString extra2, int last) {
    const bool gapsNull =
        unused1 == nullptr && unused2 == nullptr && unused3 == nullptr && unused4 == nullptr;
    usageReports.push_back(FakeUsageReport{W(name), W(type), W(details), W(module), W(version),
                                           W(extra1), W(extra2), gapsNull, last});
}

NdxDoc FakeHost::HostDocGetPdfDoc(HostDoc doc) {
    return Doc(doc).hasPdf ? reinterpret_cast<NdxDoc>(doc) : nullptr;
}
void FakeHost::HostDocGetFilePath(HostDoc doc, HostWideString out) {
    W(out) = Doc(doc).path;
}
HostPageView FakeHost::HostDocGetPageView(HostDoc doc, int pageIndex) {
    auto& pages = Doc(doc).pages;
    if (pageIndex < 0 || pageIndex >= static_cast<int>(pages.size()))
        return nullptr;
    return reinterpret_cast<HostPageView>(&pages[static_cast<std::size_t>(pageIndex)]);
}
NdxPage FakeHost::HostPageViewGetPage(HostPageView page) {
    auto* fake = reinterpret_cast<FakePage*>(page);
    return fake->available ? reinterpret_cast<NdxPage>(fake) : nullptr;
}
int FakeHost::NDXDocGetPageCount(NdxDoc doc) {
    return static_cast<int>(reinterpret_cast<FakeDoc*>(doc)->pages.size());
}
NdxObject FakeHost::NDXDocGetInfo(NdxDoc doc) {
    auto& info = reinterpret_cast<FakeDoc*>(doc)->info;
    return info ? reinterpret_cast<NdxObject>(&*info) : nullptr;
}
void FakeHost::NDXDictGetString(NdxObject dict, const char* key, HostByteString out) {
    auto& map = *reinterpret_cast<std::map<std::string, std::string>*>(dict);
    const auto it = map.find(key);
    B(out) = it != map.end() ? it->second : std::string();
}
int FakeHost::NDXPageIsParsed(NdxPage page) {
    return P(page).parsed ? 1 : 0;
}
void FakeHost::NDXPageParse(NdxPage page, NdxParseOptions) {
    P(page).parsed = true;
}
int FakeHost::NDXPageCountObjects(NdxPage page) {
    return P(page).parsed ? static_cast<int>(P(page).objects.size()) : 0;
}
NdxPosition FakeHost::NDXPageGetFirstObjectPos(NdxPage page) {
    return P(page).parsed && !P(page).objects.empty() ? reinterpret_cast<NdxPosition>(1) : nullptr;
}
NdxPageObject FakeHost::NDXPageGetNextObject(NdxPage page, NdxPosition* position) {
    auto index = reinterpret_cast<std::uintptr_t>(*position) - 1;
    auto& objects = P(page).objects;
    if (index >= objects.size())
        return nullptr;
    *position = index + 1 < objects.size() ? reinterpret_cast<NdxPosition>(index + 2) : nullptr;
    return reinterpret_cast<NdxPageObject>(&objects[index]);
}
int FakeHost::NDXPageObjectGetType(NdxPageObject object) {
    return *reinterpret_cast<int*>(object);
}
