// TablePageConnection: the page channel that a host offers as the extension table
// "pdfhost.pageChannel" (host/page_channel_abi.h), for hosts that show no page of their own. The
// connection registers itself as the table's receiver for its whole life; replies and event
// scripts go back through the table as UTF-8.
#pragma once

#include <memory>
#include <string_view>

#include "bridge/page_endpoint.h"
#include "host/host_api.h"

class TablePageConnection final : public PageConnection {
  public:
    // Connects to the host's table; null when the host offers none or refuses the connection.
    static std::unique_ptr<TablePageConnection> Connect(HostApi& host);

    ~TablePageConnection() override;
    TablePageConnection(const TablePageConnection&) = delete;
    TablePageConnection& operator=(const TablePageConnection&) = delete;

    void SetMessageHandler(MessageHandler handler) override { handler_ = std::move(handler); }
    void PostWebMessageAsString(const std::wstring& text) override;
    void ExecuteScript(const std::wstring& script) override;

  private:
    TablePageConnection(HostApi& host, HostExtTable table);
    // The receiver handed to the host; `client` is the connection.
    static void BREVAN_HOSTCALL Receive(void* client, const char* utf8Text, uint32_t size);

    HostApi& host_;
    HostExtTable table_;
    MessageHandler handler_;
};
