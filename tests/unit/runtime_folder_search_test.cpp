// The search for an installed browser runtime: the order of the four attempts, the registry's
// rules, the folder scan, the cache and the refusal of a full browser's folder.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "config/runtime_folder_search.h"

namespace {

const std::wstring kUninstall = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
const std::wstring kUninstall32 =
    L"SOFTWARE\\WOW6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";

class FakeRegistry : public RegistryReader {
  public:
    bool CanOpen(const std::wstring& key) override {
        opened.push_back(key);
        return keys.contains(key);
    }
    std::optional<std::wstring> ReadString(const std::wstring& key, const std::wstring& name,
                                           std::size_t bufferBytes) override {
        const auto found = keys.find(key);
        if (found == keys.end() || !found->second.contains(name))
            return std::nullopt;
        const std::wstring& value = found->second.at(name);
        // The value and its terminator must fit the offered buffer of two-byte characters.
        if ((value.size() + 1) * 2 > bufferBytes)
            return std::nullopt;
        return value;
    }

    std::map<std::wstring, std::map<std::wstring, std::wstring>> keys;
    std::vector<std::wstring> opened;
};

class FakeFolders : public FolderLister {
  public:
    std::vector<std::wstring> Directories(const std::wstring& folder) override {
        listed.push_back(folder);
        const auto found = folders.find(folder);
        return found != folders.end() ? found->second : std::vector<std::wstring>{};
    }
    int NativeArchitecture() override { return architecture; }
    std::wstring LocalAppDataFolder() override { return L"C:\\Users\\u\\AppData\\Local"; }

    std::map<std::wstring, std::vector<std::wstring>> folders;
    std::vector<std::wstring> listed;
    int architecture = 9;
};

class RuntimeFolderSearchTest : public testing::Test {
  protected:
    FakeRegistry registry;
    FakeFolders folders;
    RuntimeFolderSearch search{registry, folders};
};

TEST_F(RuntimeFolderSearchTest, TheRuntimesUninstallEntryGivesLocationAndVersion) {
    registry.keys[kUninstall + L"Microsoft EdgeWebView"] = {
        {L"InstallLocation", L"C:\\Program Files (x86)\\Microsoft\\EdgeWebView\\Application"},
        {L"Version", L"120.0.2210.91"}};
    EXPECT_EQ(search.Find(),
              L"C:\\Program Files (x86)\\Microsoft\\EdgeWebView\\Application\\120.0.2210.91");
    EXPECT_TRUE(folders.listed.empty());
}

TEST_F(RuntimeFolderSearchTest, TheWow64KeyIsReadOnlyWhenThePlainOneCannotBeOpened) {
    registry.keys[kUninstall32 + L"Microsoft EdgeWebView"] = {{L"InstallLocation", L"D:\\wv\\"},
                                                              {L"Version", L"1.2.3.4"}};
    EXPECT_EQ(search.Find(), L"D:\\wv\\1.2.3.4");  // no second backslash
    EXPECT_EQ(registry.opened,
              (std::vector<std::wstring>{kUninstall + L"Microsoft EdgeWebView",
                                         kUninstall32 + L"Microsoft EdgeWebView"}));
}

TEST_F(RuntimeFolderSearchTest, ALocationWithoutAReadableVersionSendsTheSearchToTheFolderScan) {
    registry.keys[kUninstall + L"Microsoft EdgeWebView"] = {{L"InstallLocation", L"D:\\wv"}};
    // The second key would answer, but the first one opened and decides.
    registry.keys[kUninstall32 + L"Microsoft EdgeWebView"] = {{L"InstallLocation", L"E:\\wv"},
                                                              {L"Version", L"9.9.9.9"}};
    const std::wstring base = L"c:\\Program Files (x86)\\Microsoft\\EdgeWebView\\Application\\";
    folders.folders[base] = {L"SetupMetrics", L"1.2.3", L"110.0.1587.57", L"120.0.2210.91"};
    EXPECT_EQ(search.Find(), base + L"110.0.1587.57");  // the first listed, not the highest

    registry.keys[kUninstall + L"Microsoft EdgeWebView"][L"Version"] = std::wstring(60, L'1');
    RuntimeFolderSearch tooLong(registry, folders);
    EXPECT_EQ(tooLong.Find(), base + L"110.0.1587.57");  // a version too long to read
}

TEST_F(RuntimeFolderSearchTest, OnA32BitSystemTheScanStartsInTheUsersLocalFolder) {
    folders.architecture = 0;
    const std::wstring base =
        L"C:\\Users\\u\\AppData\\Local\\Microsoft\\EdgeWebView\\Application\\";
    folders.folders[base] = {L"Temp", L"109.0.1518.78"};
    EXPECT_EQ(search.Find(), base + L"109.0.1518.78");
}

TEST_F(RuntimeFolderSearchTest, TheFullBrowserIsFoundLastAndRefusedForStartUp) {
    const std::wstring browserBase = L"c:\\Program Files (x86)\\Microsoft\\Edge\\Application\\";
    folders.folders[browserBase] = {L"121.0.2277.83"};
    EXPECT_EQ(search.Find(), browserBase + L"121.0.2277.83");
    EXPECT_EQ(registry.opened.size(), 4u);  // runtime and browser, each key and its Wow64 twin
    EXPECT_EQ(folders.listed.size(), 2u);
    EXPECT_FALSE(RuntimeFolderSearch::IsUsable(search.Find()));

    registry.keys[kUninstall + L"Microsoft Edge"] = {{L"InstallLocation", L"C:\\Edge\\Application"},
                                                     {L"Version", L"121.0.2277.83"}};
    RuntimeFolderSearch fromRegistry(registry, folders);
    EXPECT_EQ(fromRegistry.Find(), L"C:\\Edge\\Application\\121.0.2277.83");
    EXPECT_FALSE(RuntimeFolderSearch::IsUsable(fromRegistry.Find()));
    EXPECT_TRUE(RuntimeFolderSearch::IsUsable(L"C:\\EdgeWebView\\Application\\1.2.3.4"));
    EXPECT_FALSE(RuntimeFolderSearch::IsUsable(L""));
}

TEST_F(RuntimeFolderSearchTest, TheResultIsKeptAnEmptyOneToo) {
    EXPECT_EQ(search.Find(), L"");
    const std::size_t opened = registry.opened.size();
    registry.keys[kUninstall + L"Microsoft EdgeWebView"] = {{L"InstallLocation", L"D:\\wv"},
                                                            {L"Version", L"1.2.3.4"}};
    EXPECT_EQ(search.Find(), L"");
    EXPECT_EQ(registry.opened.size(), opened);
}

}  // namespace
