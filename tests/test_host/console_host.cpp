#include "console_host.h"

#include <memory>
#include <string_view>
#include <utility>

namespace testhost {
namespace {

// What the host answers for a function it offers; the adapter of the tables calls its own.
void BREVAN_HOSTCALL Offered() {}

}  // namespace

std::string JsonText(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return Json::writeString(builder, value);
}

std::optional<Json::Value> ParseJson(const std::string& text) {
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    Json::Value value;
    if (!reader->parse(text.data(), text.data() + text.size(), &value, nullptr))
        return std::nullopt;
    return value;
}

HostDoc ConsoleHost::OpenDocument(FakeDoc doc) {
    FireDocHook<HostDocHookNoDoc>(kDocEventWillOpen);
    return Open(std::move(doc));
}

std::vector<std::string> ConsoleHost::Exchange(const std::string& text) {
    if (receiver_ != nullptr)
        receiver_(client_, text.data(), static_cast<uint32_t>(text.size()));
    return std::exchange(replies_, {});
}

std::vector<Json::Value> ConsoleHost::TakeEvents() {
    constexpr std::string_view kCall = "window.__dispatchEvent(";
    std::vector<Json::Value> events;
    for (const std::string& script : std::exchange(scripts_, {})) {
        const std::size_t call = script.find(kCall);
        const std::size_t end = script.rfind(')');
        if (call == std::string::npos || end == std::string::npos || end < call + kCall.size())
            continue;
        const std::size_t start = call + kCall.size();
        if (std::optional<Json::Value> event = ParseJson(script.substr(start, end - start)))
            events.push_back(std::move(*event));
    }
    return events;
}

void ConsoleHost::HostDocSetChanged(HostDoc doc) {
    const bool changed = Doc(doc).modified;
    FakeHost::HostDocSetChanged(doc);
    if (!changed)
        FireDocHook<HostDocHook>(kDocEventModified, doc);
}

HostExtTable ConsoleHost::HostExtensionFind(const char* name, int version) {
    if (std::string_view(name) == kHostPageChannelTable && version == kHostPageChannelVersion)
        return Channel();
    return FakeHost::HostExtensionFind(name, version);
}

HostFunction ConsoleHost::HostExtensionGetFunction(HostExtTable table, int index) {
    const hostops::ExtTableInfo& login = hostops::InfoOf(hostops::ExtTable::Login);
    const bool whole =
        table == Channel() || table == FakeHost::HostExtensionFind(login.name, login.version);
    return whole ? &Offered : FakeHost::HostExtensionGetFunction(table, index);
}

int ConsoleHost::PageChannelConnect(HostExtTable, HostPageMessageFn receiver, void* client) {
    if (receiver == nullptr || receiver_ != nullptr)
        return 0;
    receiver_ = receiver;
    client_ = client;
    return 1;
}

void ConsoleHost::PageChannelDisconnect(HostExtTable, void* client) {
    if (client == client_)
        receiver_ = nullptr;
}

}  // namespace testhost
