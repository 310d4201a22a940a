// The plug-in started on a FakeHost with the "login" table as far as its first main window:
// ribbon built, task pane registered. Events reach the pane's page dialog once one was made; the
// test reads them back from the platform's dialog log.
#pragma once

#include "plugin_fixture.h"

class ShellFixture : public PluginFixture {
  protected:
    static constexpr const wchar_t* kSection = L"Installed\\TarvoSablemark";

    ShellFixture()
        : PluginFixture([](FakeHost& fake) {
              fake.loginTable = true;
              fake.account.signInAnswer = 1;
          }) {
        app.OnMainFrameCreated(frame);
    }

    // Presses a ribbon entry of the first frame, asking its enable procedure first as the host
    // does. False when the entry is disabled.
    bool Press(const std::wstring& entry) {
        FakeRibbonNode* node = host.Find(
            frame, {L"Ribbon_Category_Protect", L"Protect_Panel_Redaction", L"Sablemark", entry});
        EXPECT_NE(node, nullptr);
        if (node == nullptr || (node->enable != nullptr && node->enable(node) == 0))
            return false;
        node->execute(node);
        return true;
    }

    // The events the page got as their JSON texts, oldest first; clears the log.
    std::vector<std::string> TakeEvents() {
        static const std::string kPrefix = "pane CallScript __dispatchEvent ";
        std::vector<std::string> events;
        for (const std::string& line : platform.pageDialogLog) {
            if (line.starts_with(kPrefix))
                events.push_back(line.substr(kPrefix.size(), line.size() - kPrefix.size() - 1));
        }
        platform.pageDialogLog.clear();
        return events;
    }
    // The text of the event that sends the page to `page`.
    static std::string ToPage(const std::string& page) {
        return R"({"data":{"page":")" + page + R"("},"name":"ev-user-change-page"})";
    }

    void SetWelcomeStamp(const std::wstring& stamp) {
        host.preferences[{kSection, L"welcome"}] = stamp;
    }
    std::wstring Pref(const wchar_t* key) { return host.preferences[{kSection, key}]; }

    const HostFrame frame = reinterpret_cast<HostFrame>(0x500);
};
