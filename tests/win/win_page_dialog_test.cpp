#include "win_page_dialog.h"

#include <gtest/gtest.h>

#include <memory>

#include "app/page_dialog_services.h"
#include "bridge/command_table.h"
#include "config/brevan_config.h"
#include "config/service_config.h"
#include "fake_platform.h"
#include "fake_webview.h"
#include "host/extension_tables.h"
#include "host_api_defaults.h"
#include "logging/async_logger.h"
#include "web_browser.h"
#include "win_timers.h"
#include "window_test_support.h"

namespace {

// A host that lends a web view through its browser table and keeps what it was asked.
class LendingHost final : public HostApiDefaults {
  public:
    int BrowserExtOpenWebPage(HostExtTable, const wchar_t* url, HostWindow parent,
                              HostWebPageRecord* record, HostWebView* view) override {
        opened.emplace_back(url);
        parents.push_back(parent);
        records.push_back(record);
        *view = reinterpret_cast<HostWebView>(&lent);
        return 1;
    }
    void BrowserExtCloseWebPage(HostExtTable, HostWindow window) override {
        closed.push_back(window);
    }

    int lent = 0;
    std::vector<std::wstring> opened;
    std::vector<HostWindow> parents;
    std::vector<HostWebPageRecord*> records;
    std::vector<HostWindow> closed;
};

class WinPageDialogTest : public ::testing::Test, protected FakeBrowserRuntime {
  protected:
    WinPageDialogTest() { browserExt_->table = reinterpret_cast<HostExtTable>(&host_); }
    ~WinPageDialogTest() override { DestroyWindow(parent_); }

    std::unique_ptr<WinPageDialog> Make(PageDialogKind kind) {
        return std::make_unique<WinPageDialog>(services_, runtime_, kind, parent_);
    }

    LendingHost host_;
    FakePlatform platform_;
    CommandTable commands_;
    std::unique_ptr<BrevanConfig> config_;
    std::unique_ptr<ServiceConfig> serviceConfig_;
    std::unique_ptr<CBrowser> browserExt_ = std::make_unique<CBrowser>();
    bool accountPage_ = false;
    std::unique_ptr<PageConnection> hostPage_;
    ChannelFileStream browserStream_, paneStream_, batchStream_;
    PageDialogServices services_{host_,     platform_,      commands_,   AsyncLogger::Instance(),
                                 config_,   serviceConfig_, browserExt_, accountPage_,
                                 hostPage_, browserStream_, paneStream_, batchStream_};
    HWND parent_ = MakeParentWindow();
};

TEST_F(WinPageDialogTest, ThePaneShowsTheHostViewUntilItsBrowserHasLoaded) {
    auto dialog = Make(PageDialogKind::TaskPane);
    ASSERT_TRUE(dialog->webViewStarted());
    ASSERT_EQ(host_.opened.size(), 1u);
    EXPECT_EQ(host_.parents[0], dialog->Window());
    EXPECT_NE(host_.records[0], nullptr);
    EXPECT_EQ(GetParent(reinterpret_cast<HWND>(dialog->Window())), parent_);

    // Created: without a service document there is no address, so the offline page loads.
    PumpMessages();
    EXPECT_EQ(dialog->url(), L"");
    ASSERT_FALSE(log_.empty());
    EXPECT_EQ(log_.back().rfind("Navigate(", 0), 0u) << log_.back();
    EXPECT_TRUE(host_.closed.empty());
    webView_.CompleteNavigation();
    EXPECT_EQ(host_.closed, std::vector<HostWindow>{dialog->Window()});
    EXPECT_FALSE(dialog->hostViewOpen());

    // Events go to the browser as one script.
    dialog->CallScript(L"__dispatchEvent", {L"{\"type\":\"ev-x\"}"}, nullptr);
    EXPECT_EQ(webView_.scripts.back(), L" window.__dispatchEvent({\"type\":\"ev-x\"});");
}

TEST_F(WinPageDialogTest, WithoutABrowserTheBatchOpensTheHostViewAtOnce) {
    runtime_.runtimeFolder = L"";
    platform_.connected = false;
    auto dialog = Make(PageDialogKind::Batch);
    EXPECT_FALSE(dialog->webViewStarted());
    ASSERT_EQ(host_.opened.size(), 1u);
    EXPECT_EQ(host_.parents[0], dialog->Window());
    EXPECT_TRUE(dialog->hostViewOpen());
    wchar_t title[64] = {};
    GetWindowTextW(reinterpret_cast<HWND>(dialog->Window()), title, 64);
    EXPECT_STREQ(title, L"Batch Redaction");

    // Another page reopens the view on the new address; a script call has nowhere to go.
    dialog->Reload(false);
    EXPECT_EQ(host_.opened.size(), 2u);
    EXPECT_EQ(host_.closed.size(), 1u);
    dialog->CallScript(L"__dispatchEvent", {L"{}"}, nullptr);
    EXPECT_TRUE(webView_.scripts.empty());

    const HostWindow window = dialog->Window();
    dialog.reset();
    EXPECT_EQ(host_.closed.back(), window);
}

TEST_F(WinPageDialogTest, TheBatchRunHoldsItsOwnerUntilItEnds) {
    auto dialog = Make(PageDialogKind::Batch);
    PostMessageW(reinterpret_cast<HWND>(dialog->Window()), WM_CLOSE, 0, 0);
    EXPECT_EQ(dialog->RunModal(), WinPageDialog::kClosed);
    EXPECT_TRUE(IsWindowEnabled(parent_));

    // A command of the page ends the run with OK from inside its loop.
    WinTimers timers;
    bool ownerDisabled = false;
    timers.Start(10, [&] {
        ownerDisabled = !IsWindowEnabled(parent_);
        dialog->EndModal(1);
    });
    EXPECT_EQ(dialog->RunModal(), 1);
    EXPECT_TRUE(ownerDisabled);
    EXPECT_TRUE(IsWindowEnabled(parent_));
}

}  // namespace
