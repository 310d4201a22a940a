// The plug-in's ribbon in pdfhost, pressed through the scripted "ribbon" line: the enable rules,
// the welcome step, the task pane and what the page hears; and the one-time greeting.
#include "plugin_host_fixture.h"

namespace {

Json::Value HostLine(const std::string& command) {
    Json::Value line(Json::objectValue);
    line["host"] = command;
    return line;
}

Json::Value Press(const std::string& item) {
    Json::Value line = HostLine("ribbon");
    line["item"] = item;
    return line;
}

Json::Value Answer(const std::string& dialog, const Json::Value& value) {
    Json::Value line = HostLine("answer");
    line["dialog"] = dialog;
    line["value"] = value;
    return line;
}

// The data of the "ev-user-change-page" events among the lines, in order.
std::vector<std::string> ChangePages(const std::vector<Json::Value>& lines) {
    std::vector<std::string> pages;
    for (const Json::Value& line : lines) {
        const std::string script = line["event"].asString();
        if (script.find("\"ev-user-change-page\"") == std::string::npos)
            continue;
        const auto start = script.find("\"page\":\"");
        const auto end = script.find('"', start + 8);
        pages.push_back(script.substr(start + 8, end - start - 8));
    }
    return pages;
}

std::size_t CountDialogs(const std::vector<Json::Value>& lines, const std::string& kind) {
    std::size_t count = 0;
    for (const Json::Value& line : lines)
        count += line["dialog"].asString() == kind ? 1 : 0;
    return count;
}

class RibbonInHostTest : public PluginHostTest {
  protected:
    bool PaneShown() {
        for (const Json::Value& line : Line(HostLine("state"))) {
            if (line.isMember("state"))
                return line["state"]["paneShown"].asBool();
        }
        ADD_FAILURE() << "no state line";
        return false;
    }
};

TEST_F(RibbonInHostTest, AutoRedactionShowsThePaneAndSendsThePageHome) {
    Start();
    auto lines = Line(Press("AutoRedaction"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["error"].asString(), "disabled: AutoRedaction");
    EXPECT_FALSE(PaneShown());

    ASSERT_GT(Open(MakePdf("a.pdf", {{pdfhost::engine::PageDescription::Blank()}})), 0);
    EXPECT_FALSE(PaneShown());
    // The signed-in user meets the welcome once, and signs in again there.
    Line(Answer("welcome", 0));
    Line(Answer("signIn", true));
    lines = Line(Press("AutoRedaction"));
    EXPECT_EQ(CountDialogs(lines, "welcome"), 1u);
    EXPECT_EQ(ChangePages(lines), std::vector<std::string>{"home"});
    EXPECT_TRUE(PaneShown());

    lines = Line(Press("AutoRedaction"));
    EXPECT_EQ(CountDialogs(lines, "welcome"), 0u);
    EXPECT_EQ(ChangePages(lines), std::vector<std::string>{"home"});

    lines = Line(Press("Profile"));
    EXPECT_EQ(ChangePages(lines), std::vector<std::string>{"my-plan"});
    EXPECT_TRUE(PaneShown());
    lines = Line(Press("BatchRedact"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["error"].asString(), "disabled: BatchRedact");

    // A start page hides the pane, and it stays hidden when the PDF tab comes back.
    Line(HostLine("startPage"));
    EXPECT_FALSE(PaneShown());
    Json::Value activate = HostLine("activate");
    activate["doc"] = 1;
    Line(activate);
    EXPECT_FALSE(PaneShown());
}

TEST_F(RibbonInHostTest, NotNowInTheWelcomeLeavesThePaneClosed) {
    Start();
    Line(HostLine("signOut"));
    ASSERT_GT(Open(MakePdf("a.pdf", {{pdfhost::engine::PageDescription::Blank()}})), 0);
    Line(Answer("welcome", 2));
    const auto lines = Line(Press("AutoRedaction"));
    EXPECT_EQ(CountDialogs(lines, "welcome"), 1u);
    EXPECT_TRUE(ChangePages(lines).empty());
    EXPECT_FALSE(PaneShown());
}

TEST_F(RibbonInHostTest, TheGreetingIsShownAtStartAndRemembered) {
    Start();
    ASSERT_EQ(host->Bubbles().Shown().size(), 1u);
    EXPECT_NE(host->Bubbles().Shown()[0].text.find(L"Auto Redaction"), std::wstring::npos);
    EXPECT_EQ(host->Bubbles().Shown()[0].milliseconds, 10000);
    EXPECT_EQ(host->Preferences().GetInt("Installed\\TarvoSablemark", "Greeting"), 1);
}

}  // namespace
