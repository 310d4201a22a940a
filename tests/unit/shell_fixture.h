// The plug-in started on a ShellFakeHost as far as its first main window: ribbon built, task
// pane registered. Events reach the pane's page dialog once one was made; the test reads them
// back from the platform's dialog log.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <string>
#include <vector>

#include "app/brevan.h"
#include "bridge/json_text.h"
#include "shell_fake_host.h"

class ShellFixture : public testing::Test {
  protected:
    static constexpr const wchar_t* kSection = L"Installed\\TarvoSablemark";

    ShellFixture() {
        app.Attach(host, platform);
        app.ImportTables();
        EXPECT_EQ(app.Init(), 1);
        app.OnMainFrameCreated(frame);
    }
    ~ShellFixture() override { app.Unload(); }

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

    // The events the page got, parsed, oldest first; clears the log.
    std::vector<Json::Value> TakeEvents() {
        static const std::string kPrefix = "pane CallScript __dispatchEvent ";
        std::vector<Json::Value> events;
        for (const std::string& line : platform.pageDialogLog) {
            if (line.rfind(kPrefix, 0) != 0)
                continue;
            Json::Value event;
            EXPECT_TRUE(ParseJson(line.substr(kPrefix.size()), event)) << line;
            events.push_back(event);
        }
        platform.pageDialogLog.clear();
        return events;
    }

    void SetWelcomeStamp(const std::wstring& stamp) {
        host.stringPrefs[{kSection, L"welcome"}] = stamp;
    }
    std::wstring Pref(const wchar_t* key) { return host.stringPrefs[{kSection, key}]; }

    const HostFrame frame = reinterpret_cast<HostFrame>(0x500);
    ShellFakeHost host;
    FakePlatform platform;
    Brevan app;
};
