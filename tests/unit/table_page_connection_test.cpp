// The page channel a host offers as the extension table "pdfhost.pageChannel": when the plug-in
// connects, the text that crosses it both ways, and the plug-in serving its page through it when
// the platform offers no channel of its own.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "bridge/table_page_connection.h"
#include "plugin_fixture.h"

namespace {

// A host that offers the table while `offer` is set and accepts a receiver while `accept` is.
class ChannelHost : public FakeHost {
  public:
    HostExtTable HostExtensionFind(const char* name, int version) override {
        if (offer && std::string(name) == kHostPageChannelTable &&
            version == kHostPageChannelVersion) {
            return Table();
        }
        return FakeHost::HostExtensionFind(name, version);
    }
    int PageChannelConnect(HostExtTable table, HostPageMessageFn fn, void* data) override {
        ++connects;
        if (!accept || table != Table() || receiver != nullptr)
            return 0;
        receiver = fn;
        client = data;
        return 1;
    }
    void PageChannelDisconnect(HostExtTable, void* data) override {
        disconnects.push_back(data);
        if (data == client)
            receiver = nullptr;
    }
    void PageChannelPostMessage(HostExtTable, const char* text, uint32_t size) override {
        replies.emplace_back(text, size);
    }
    void PageChannelExecuteScript(HostExtTable, const char* text, uint32_t size) override {
        scripts.emplace_back(text, size);
    }

    // The page posts `text` as it stands.
    void PagePosts(const std::string& text) {
        ASSERT_NE(receiver, nullptr);
        receiver(client, text.data(), static_cast<uint32_t>(text.size()));
    }

    bool offer = true;
    bool accept = true;
    int connects = 0;
    HostPageMessageFn receiver = nullptr;
    void* client = nullptr;
    std::vector<void*> disconnects;
    std::vector<std::string> replies;
    std::vector<std::string> scripts;

  private:
    HostExtTable Table() { return reinterpret_cast<HostExtTable>(&table_); }
    int table_ = 0;
};

TEST(TablePageConnectionTest, ConnectsOnlyToAnOfferedTableThatAcceptsIt) {
    struct Case {
        bool offer;
        bool accept;
        bool connected;
        int connects;
    };
    for (const Case& c :
         {Case{false, true, false, 0}, Case{true, false, false, 1}, Case{true, true, true, 1}}) {
        ChannelHost host;
        host.offer = c.offer;
        host.accept = c.accept;
        std::unique_ptr<TablePageConnection> connection = TablePageConnection::Connect(host);
        EXPECT_EQ(connection != nullptr, c.connected) << c.offer << c.accept;
        EXPECT_EQ(host.connects, c.connects) << c.offer << c.accept;
        connection.reset();
        // Only a connection that was made is withdrawn.
        EXPECT_EQ(host.disconnects.size(), c.connected ? 1u : 0u) << c.offer << c.accept;
    }
}

TEST(TablePageConnectionTest, CarriesTheTextBothWaysAsUtf8UntilItGoes) {
    ChannelHost host;
    std::unique_ptr<TablePageConnection> connection = TablePageConnection::Connect(host);
    ASSERT_TRUE(connection);
    std::vector<std::string> received;
    connection->SetMessageHandler(
        [&](std::string_view text) { received.emplace_back(text.data(), text.size()); });

    const char bytes[] = "[\"b\0c\",\"\xC3\xA9\"]";
    const std::string withZero(bytes, sizeof bytes - 1);
    host.PagePosts(withZero);
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0], withZero);

    connection->PostWebMessageAsString(L"{\"data\":\"\u00e9\u20ac\",\"ret\":0}\n");
    connection->ExecuteScript(L" window.__dispatchEvent({\"name\":\"\u00fc\"});");
    EXPECT_EQ(host.replies,
              std::vector<std::string>{"{\"data\":\"\xC3\xA9\xE2\x82\xAC\",\"ret\":0}\n"});
    EXPECT_EQ(host.scripts,
              std::vector<std::string>{" window.__dispatchEvent({\"name\":\"\xC3\xBC\"});"});

    void* client = host.client;
    connection.reset();
    EXPECT_EQ(host.disconnects, std::vector<void*>{client});
    EXPECT_EQ(host.receiver, nullptr);
}

class TableChannelPluginTest : public PluginFixtureOf<ChannelHost> {};

TEST_F(TableChannelPluginTest, ThePluginServesItsPageThroughTheTableWhenThePlatformHasNone) {
    app.OnMainFrameCreated(reinterpret_cast<HostFrame>(host.mainWindow));
    ASSERT_NE(host.receiver, nullptr);
    host.Open(FileDoc(L"/docs/a.pdf"));
    ASSERT_FALSE(host.scripts.empty());
    EXPECT_NE(host.scripts.back().find("\"name\":\"ev-doc-activate\""), std::string::npos);

    host.PagePosts(R"(["base","getFilePageCount",{},"u-7"])");
    ASSERT_EQ(host.replies.size(), 1u);
    const Json::Value reply = JsonOf(host.replies[0]);
    EXPECT_EQ(reply["ret"], 0);
    EXPECT_EQ(reply["uuid"], "u-7");
    EXPECT_EQ(reply["data"]["pageCount"], 1);

    // A second main frame keeps the one connection.
    app.OnMainFrameCreated(reinterpret_cast<HostFrame>(0x600));
    EXPECT_EQ(host.connects, 1);
}

}  // namespace
