#include "system_runtime_readers.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "system_paths.h"

namespace {

constexpr const wchar_t* kKey = L"SOFTWARE\\SablemarkWinLayerTest";

class RegistryReaderTest : public ::testing::Test {
  protected:
    RegistryReaderTest() {
        HKEY key = nullptr;
        created_ = RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_WRITE, nullptr,
                                   &key, nullptr) == ERROR_SUCCESS;
        if (!created_)
            return;
        Set(key, L"InstallLocation", L"C:\\Runtime\\");
        Set(key, L"Version", std::wstring(60, L'9'));  // 122 bytes with its NUL
        Set(key, L"Short", L"1.2.3.4");
        const DWORD number = 7;
        RegSetValueExW(key, L"Number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                       sizeof number);
        RegCloseKey(key);
    }
    ~RegistryReaderTest() override { RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey); }

    static void Set(HKEY key, const wchar_t* name, const std::wstring& value) {
        RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                       static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }

    bool created_ = false;
    SystemRegistryReader reader_;
};

TEST_F(RegistryReaderTest, ReadsStringsThatFitTheOfferedBuffer) {
    ASSERT_TRUE(created_);
    EXPECT_TRUE(reader_.CanOpen(kKey));
    EXPECT_FALSE(reader_.CanOpen(L"SOFTWARE\\SablemarkWinLayerTest\\Missing"));
    EXPECT_EQ(reader_.ReadString(kKey, L"InstallLocation", 260), L"C:\\Runtime\\");
    EXPECT_EQ(reader_.ReadString(kKey, L"Short", 100), L"1.2.3.4");
    // Too long for the buffer, not a string, not there, no key.
    EXPECT_EQ(reader_.ReadString(kKey, L"Version", 100), std::nullopt);
    EXPECT_EQ(reader_.ReadString(kKey, L"Version", 260), std::wstring(60, L'9'));
    EXPECT_EQ(reader_.ReadString(kKey, L"Number", 100), std::nullopt);
    EXPECT_EQ(reader_.ReadString(kKey, L"Absent", 100), std::nullopt);
    EXPECT_EQ(reader_.ReadString(L"SOFTWARE\\NoSuchKeyHere", L"Version", 100), std::nullopt);
}

TEST(FolderListerTest, ListsDirectoriesOnly) {
    const std::wstring base = SystemTempFolder() + L"winlayer-scan\\";
    CreateDirectoryW(base.c_str(), nullptr);
    for (const wchar_t* name : {L"120.0.1.2", L"Locale", L"9.8.7.6"})
        CreateDirectoryW((base + name).c_str(), nullptr);
    const HANDLE file = CreateFileW((base + L"1.2.3.4").c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    CloseHandle(file);

    SystemFolderLister lister;
    std::vector<std::wstring> names = lister.Directories(base);
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const std::wstring& n) { return n == L"." || n == L".."; }),
                names.end());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::wstring>{L"120.0.1.2", L"9.8.7.6", L"Locale"}));
    EXPECT_TRUE(lister.Directories(base + L"missing\\").empty());
    EXPECT_FALSE(lister.LocalAppDataFolder().empty());

    DeleteFileW((base + L"1.2.3.4").c_str());
    for (const wchar_t* name : {L"120.0.1.2", L"Locale", L"9.8.7.6"})
        RemoveDirectoryW((base + name).c_str());
    RemoveDirectoryW(base.c_str());
}

}  // namespace
