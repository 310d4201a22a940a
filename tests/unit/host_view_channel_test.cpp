// The request channel of a page in the host's web view: replies as the call's result, and the
// dialog as the commands' owner.
#include <gtest/gtest.h>

#include "bridge/host_view_channel.h"
#include "fake_page_dialog.h"
#include "host/host_string.h"
#include "plugin_fixture.h"

namespace {

class HostViewChannelTest : public PluginFixture {
  protected:
    std::string Call(const wchar_t* module, const wchar_t* command, const wchar_t* params) {
        HostWide result(host);
        const HostWebPageRecord& record = channel.record();
        auto dispatch = reinterpret_cast<HostWebPageDispatchFn>(record.word(kWebPageDispatch));
        dispatch(record.word(kWebPageClientData), module, command, params, result);
        return ToUtf8(result.Text());
    }

    std::vector<std::string> log;
    FakePageDialog dialog{log, "pane"};
    HostViewChannel channel{app.host(), app.commands(), dialog, app.paneViewStream};
};

TEST_F(HostViewChannelTest, RepliesComeBackAsTheCallsResultWithoutIdentifier) {
    host.Open(FileDoc(L"/docs/a.pdf"));
    EXPECT_EQ(Call(L"base", L"isCurrentDocModified", L""), "{\"data\":false,\"ret\":0}\n");
    EXPECT_EQ(Call(L"base", L"noSuchCommand", L"{}"), "{\"data\":null,\"ret\":400000}\n");
    EXPECT_EQ(Call(nullptr, nullptr, nullptr), "{\"data\":null,\"ret\":400000}\n");
}

TEST_F(HostViewChannelTest, TheCommandsSeeTheDialogAsTheirOwner) {
    EXPECT_EQ(Call(L"base", L"reload", L""), "{\"data\":\"\",\"ret\":0}\n");
    EXPECT_EQ(log, std::vector<std::string>{"pane Reload 0"});
}

}  // namespace
