// Preferences and plug-in settings: kept in the profile, read back by the next host.
#include <fstream>

#include "host_test_support.h"

namespace pdfhost::testing {
namespace {

std::wstring PrefString(const wchar_t* section, const wchar_t* key) {
    return ReadWide([&](HostWideString out) { Call<HostPrefGetString>(section, key, out); });
}

std::wstring Setting(const wchar_t* section, const wchar_t* key, const wchar_t* fallback) {
    return ReadWide(
        [&](HostWideString out) { Call<HostPluginSettingGet>(section, key, out, fallback); });
}

TEST(Settings, SurviveANewHostOnTheSameProfile) {
    TempFolder profile;
    {
        HostApp app(OptionsOn(profile.Path()));
        Call<HostPrefSetInt>(L"Installed\\Plugin", L"welcome", 3);
        Call<HostPrefSetString>(L"Installed\\Plugin", L"lastTime", L"2026-01-02 \u00e9");
        Call<HostPluginSettingSet>(L"plugins\\Installed\\Plugin", L"bLoad", L"2026.1.0");
    }
    HostApp app(OptionsOn(profile.Path()));
    EXPECT_EQ(Call<HostPrefGetInt>(L"Installed\\Plugin", L"welcome"), 3);
    EXPECT_EQ(PrefString(L"Installed\\Plugin", L"lastTime"), L"2026-01-02 \u00e9");
    EXPECT_EQ(Setting(L"plugins\\Installed\\Plugin", L"bLoad", L""), L"2026.1.0");
    // Preferences and plug-in settings are separate stores.
    EXPECT_EQ(PrefString(L"plugins\\Installed\\Plugin", L"bLoad"), L"");
}

TEST(Settings, MissingValuesGiveDefaultsAndNumbersReadAsText) {
    TempFolder profile;
    HostApp app(OptionsOn(profile.Path()));
    EXPECT_EQ(Call<HostPrefGetInt>(L"none", L"none"), 0);
    EXPECT_EQ(PrefString(L"none", L"none"), L"");
    EXPECT_EQ(Setting(L"none", L"none", L"fallback"), L"fallback");
    EXPECT_EQ(Setting(L"none", L"none", nullptr), L"");

    Call<HostPrefSetInt>(L"s", L"n", -12);
    EXPECT_EQ(PrefString(L"s", L"n"), L"-12");
    Call<HostPrefSetString>(L"s", L"t", L"41");
    EXPECT_EQ(Call<HostPrefGetInt>(L"s", L"t"), 41);
    Call<HostPrefSetString>(L"s", L"t", L"41x");
    EXPECT_EQ(Call<HostPrefGetInt>(L"s", L"t"), 0);
}

TEST(Settings, ABrokenFileIsIgnored) {
    TempFolder profile;
    std::ofstream(profile / "preferences.json") << "{ not json";
    HostApp app(OptionsOn(profile.Path()));
    EXPECT_EQ(PrefString(L"s", L"k"), L"");
    Call<HostPrefSetString>(L"s", L"k", L"v");
    EXPECT_EQ(PrefString(L"s", L"k"), L"v");
}

TEST(Settings, OneHostAtATimeOnATemporaryProfileThatIsMadeAndRemoved) {
    std::filesystem::path folder;
    {
        HostApp app(HostOptions{});
        EXPECT_EQ(HostApp::Current(), &app);
        EXPECT_THROW(HostApp second(HostOptions{}), std::logic_error);
        EXPECT_EQ(HostApp::Current(), &app);
        folder = app.ProfileFolder().Folder();
        EXPECT_TRUE(std::filesystem::is_directory(folder / "userdata"));
        Call<HostPrefSetInt>(L"s", L"k", 1);
        EXPECT_TRUE(std::filesystem::exists(folder / "preferences.json"));
    }
    EXPECT_FALSE(std::filesystem::exists(folder));
}

}  // namespace
}  // namespace pdfhost::testing
