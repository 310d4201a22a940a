// The page's progress bar: the checks of its three commands, a bar that keeps its first title,
// the watchdog that takes a bar down after a silence of the bridge, and the transfer bars.
#include "document/progress_bar_host.h"
#include "plugin_fixture.h"

namespace {

class ProgressBarTest : public PluginFixture {
  protected:
    // The one watchdog timer running, or 0.
    unsigned Watchdog() const {
        EXPECT_LE(platform.timers.size(), 1u);
        return platform.timers.empty() ? 0 : platform.timers.begin()->first;
    }
};

TEST_F(ProgressBarTest, CommandChecksInOrder) {
    const std::pair<const char*, int> creates[] = {
        {"not json", 100001},
        {R"({"timeout":5})", 100027},
        {R"({"title":"","timeout":5})", 100027},
        {R"({"title":5,"timeout":5})", 100027},
        {R"({"title":"t"})", 100028},
        {R"({"title":"t","timeout":-1})", 100028},
        {R"({"title":"t","timeout":"10"})", 100028},
        {R"({"title":"t","timeout":1.5})", 100028},
    };
    for (const auto& [params, code] : creates)
        EXPECT_EQ(Ret("createProgressBar", params), code) << params;
    const std::pair<const char*, int> updates[] = {{"not json", 100001},
                                                   {R"({"title":"t"})", 100029},
                                                   {R"({"currentPos":101})", 100029},
                                                   {R"({"currentPos":-1})", 100029},
                                                   {R"({"currentPos":"5"})", 100029}};
    for (const auto& [params, code] : updates)
        EXPECT_EQ(Ret("updateProgressBar", params), code) << params;
    EXPECT_TRUE(host.progressWindows.empty());

    // Without a bar, updates and destroys answer 0; the message command is not one of the page's.
    EXPECT_EQ(Ret("updateProgressBar", R"({"currentPos":100})"), 0);
    EXPECT_EQ(Ret("destroyProgressBar", "not json is not read"), 0);
    EXPECT_TRUE(Call("createProgressBar", R"({"title":"t","timeout":0})")["data"].isNull());
    EXPECT_EQ(Ret("showMessage", R"({"text":"hi"})"), 400000);
}

TEST_F(ProgressBarTest, WatchdogClosesTheBarAfterASilenceOfTheBridge) {
    ASSERT_EQ(Ret("createProgressBar", R"({"title":"t","timeout":5})"), 0);
    // Any command, even an unknown one, is a sign of life: the bar survives one tick.
    EXPECT_EQ(Ret("noSuchCommand"), 400000);
    unsigned timer = Watchdog();
    ASSERT_TRUE(platform.Tick(timer));
    EXPECT_NE(host.Bar(), nullptr);
    EXPECT_NE(Watchdog(), timer);

    // An update starts the period again.
    timer = Watchdog();
    EXPECT_EQ(Ret("updateProgressBar", R"({"currentPos":10})"), 0);
    EXPECT_NE(Watchdog(), timer);
    EXPECT_EQ(platform.timers.at(Watchdog()).first, 5000u);

    // The update was a command too; the next silent tick takes the bar down.
    ASSERT_TRUE(platform.Tick(Watchdog()));
    EXPECT_NE(host.Bar(), nullptr);
    ASSERT_TRUE(platform.Tick(Watchdog()));
    EXPECT_EQ(host.Bar(), nullptr);
    EXPECT_EQ(Watchdog(), 0u);

    // A time-out of 0 asks for the platform's shortest period; huge ones are capped.
    ASSERT_EQ(Ret("createProgressBar", R"({"title":"t","timeout":0})"), 0);
    EXPECT_EQ(platform.timers.at(Watchdog()).first, 0u);
    EXPECT_EQ(Ret("destroyProgressBar"), 0);
    ASSERT_EQ(Ret("createProgressBar", R"({"title":"t","timeout":18446744073709551615})"), 0);
    EXPECT_EQ(platform.timers.at(Watchdog()).first, 2147483647u);

    // Unloading takes the bar and its timer down.
    app.Unload();
    EXPECT_EQ(host.Bar(), nullptr);
    EXPECT_EQ(Watchdog(), 0u);
}

TEST_F(ProgressBarTest, TransferBarsHaveTheirTextsAndNoWatchdog) {
    ProgressBarHost& bars = *app.progressBar;
    bars.showFixed(ProgressBarHost::kUploadBar);
    EXPECT_EQ(host.Bar()->text, L"Uploading file...");
    EXPECT_EQ(Watchdog(), 0u);
    bars.showFixed(ProgressBarHost::kDownloadBar);
    bars.showTimed(L"Page bar", 5);
    EXPECT_EQ(host.progressWindows.size(), 1u);
    EXPECT_EQ(Watchdog(), 0u);
    bars.update(30, L"");
    EXPECT_EQ(host.Bar()->positions, std::vector<int>{30});
    bars.close();
    bars.showFixed(ProgressBarHost::kDownloadBar);
    EXPECT_EQ(host.Bar()->text, L"Downloading file...");
    bars.close();

    // A bar the host refuses is silently absent.
    host.refuseProgress = true;
    EXPECT_EQ(Ret("createProgressBar", R"({"title":"t","timeout":5})"), 0);
    EXPECT_FALSE(bars.shown());
    EXPECT_EQ(Watchdog(), 0u);
    EXPECT_EQ(Ret("updateProgressBar", R"({"currentPos":5})"), 0);
}

}  // namespace
