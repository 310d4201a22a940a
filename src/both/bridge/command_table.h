// CommandTable: the bridge's commands by name. Each feature adds its own commands at start-up;
// the bridge knows none of them. A request of module "base" naming a command of the table builds
// that command's dispatcher; anything else builds the plain BaseDispatcher, whose reply is the
// unknown-command answer.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "bridge/base_dispatcher.h"
#include "bridge/channel_file_stream.h"

// What a command may take from its request besides the application's parts. The dispatcher keeps
// the parameters by reference, so they must outlive it: a temporary is refused.
struct CommandRequest {
    CommandRequest(void* owner, const CommandParams& params, ChannelFileStream& stream)
        : owner(owner), params(params), stream(stream) {}
    CommandRequest(void*, CommandParams&&, ChannelFileStream&) = delete;

    // The page dialog of a host-browser channel, null on the browser channel.
    void* owner;
    const CommandParams& params;
    // The channel's file stream, which outlives the request.
    ChannelFileStream& stream;
};

class CommandTable {
  public:
    using Factory = std::function<std::unique_ptr<BaseDispatcher>(const CommandRequest&)>;

    // Adds a command of module "base"; a second command of the same name replaces the first.
    void Add(std::wstring_view name, Factory make);

    // The flag each request raises as a sign of life of the page (may give null).
    void SetActivityWatch(std::function<bool*()> watch) { watch_ = std::move(watch); }

    std::unique_ptr<BaseDispatcher> Create(const std::wstring& module, const std::wstring& command,
                                           const CommandRequest& request) const;

    std::size_t size() const { return commands_.size(); }

  private:
    std::unordered_map<std::wstring, Factory> commands_;
    std::function<bool*()> watch_;
};

// Factories for the usual shapes of a command's constructor.
template <typename Command, typename... Parts>
CommandTable::Factory TakingNothing(Parts&... parts) {
    return [&parts...](const CommandRequest&) { return std::make_unique<Command>(parts...); };
}

template <typename Command, typename... Parts>
CommandTable::Factory TakingParams(Parts&... parts) {
    return [&parts...](const CommandRequest& request) {
        return std::make_unique<Command>(parts..., request.params);
    };
}
