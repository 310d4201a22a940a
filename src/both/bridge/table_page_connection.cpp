#include "table_page_connection.h"

#include <limits>
#include <string>

#include "host/extension_tables.h"
#include "util/utf.h"

namespace {

// Sends UTF-8 text through one of the table's text functions; text beyond what the size word
// holds is not sent at all rather than cut.
template <typename Send>
void SendUtf8(const std::wstring& text, Send send) {
    const std::string utf8 = ToUtf8(text);
    if (utf8.size() > std::numeric_limits<uint32_t>::max())
        return;
    send(utf8.c_str(), static_cast<uint32_t>(utf8.size()));
}

}  // namespace

std::unique_ptr<TablePageConnection> TablePageConnection::Connect(HostApi& host) {
    const HostExtTable table = FindExtensionTable(host, hostops::ExtTable::PageChannel);
    if (table == nullptr)
        return nullptr;
    std::unique_ptr<TablePageConnection> connection(new TablePageConnection(host, table));
    if (host.PageChannelConnect(table, &TablePageConnection::Receive, connection.get()) == 0) {
        connection->table_ = nullptr;  // never connected: nothing to disconnect
        return nullptr;
    }
    return connection;
}

TablePageConnection::TablePageConnection(HostApi& host, HostExtTable table)
    : host_(host), table_(table) {}

TablePageConnection::~TablePageConnection() {
    if (table_ != nullptr)
        host_.PageChannelDisconnect(table_, this);
}

void TablePageConnection::PostWebMessageAsString(const std::wstring& text) {
    SendUtf8(text, [this](const char* utf8, uint32_t size) {
        host_.PageChannelPostMessage(table_, utf8, size);
    });
}

void TablePageConnection::ExecuteScript(const std::wstring& script) {
    SendUtf8(script, [this](const char* utf8, uint32_t size) {
        host_.PageChannelExecuteScript(table_, utf8, size);
    });
}

void BREVAN_HOSTCALL TablePageConnection::Receive(void* client, const char* utf8Text,
                                                  uint32_t size) {
    auto* self = static_cast<TablePageConnection*>(client);
    if (self == nullptr || !self->handler_)
        return;
    self->handler_(utf8Text != nullptr ? std::string_view(utf8Text, size) : std::string_view());
}
