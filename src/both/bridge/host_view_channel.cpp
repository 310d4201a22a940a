#include "host_view_channel.h"

#include <string>

#include "bridge/command_table.h"
#include "bridge/page_dialog.h"
#include "host/host_api.h"
#include "util/utf.h"

namespace {

std::wstring TextOf(const wchar_t* text) {
    return text != nullptr ? std::wstring(text) : std::wstring();
}

}  // namespace

HostViewChannel::HostViewChannel(HostApi& host, const CommandTable& commands, PageDialog& dialog,
                                 ChannelFileStream& stream)
    : host_(host), commands_(commands), dialog_(dialog), stream_(stream) {
    record_.setWord(kWebPageClientData, this);
    record_.setWord(kWebPageDispatch, HookWord<HostWebPageDispatchFn>(&HostViewChannel::Dispatch));
}

void BREVAN_HOSTCALL HostViewChannel::Dispatch(void* client, const wchar_t* module,
                                               const wchar_t* command, const wchar_t* params,
                                               HostWideString result) {
    if (client == nullptr)
        return;
    HostViewChannel& self = *static_cast<HostViewChannel*>(client);
    const std::wstring commandName = TextOf(command);
    const std::optional<std::wstring> reply = ContainedReply(
        [&] {
            const CommandParams request = CommandParams::FromText(ToUtf8(TextOf(params)));
            auto dispatcher = self.commands_.Create(
                TextOf(module), commandName,
                CommandRequest{static_cast<void*>(&self.dialog_), request, self.stream_});
            return dispatcher->Dispatch(commandName.c_str());
        },
        ToUtf8(commandName));
    if (reply)
        self.host_.HostWideStringSet(result, reply->c_str());
}
