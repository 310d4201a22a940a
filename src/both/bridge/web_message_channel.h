// WebMessageChannel: the page's request channel of an embedded browser. Each message is the text
// of a JSON array [module, command, parameters, identifier]; the reply goes back through the
// endpoint as a string. The channel owns its file stream for the plug-in's whole run.
#pragma once

#include <string_view>

#include "bridge/channel_file_stream.h"
#include "bridge/page_endpoint.h"

class CommandTable;

class WebMessageChannel {
  public:
    // The plain-text answer to an envelope that is not a four-element array.
    static constexpr const wchar_t* kBadEnvelopeReply = L"Error Message Parma";

    WebMessageChannel(const CommandTable& commands, PageEndpoint& endpoint)
        : commands_(commands), endpoint_(endpoint), fileStream_(ownStream_) {}
    // A channel whose file stream outlives it, for a channel that several pages share in turn.
    // `owner` is the page dialog the channel serves, handed to the commands as theirs.
    WebMessageChannel(const CommandTable& commands, PageEndpoint& endpoint,
                      ChannelFileStream& stream, void* owner = nullptr)
        : commands_(commands), endpoint_(endpoint), fileStream_(stream), owner_(owner) {}

    // Serves one message of the page (UTF-8 text).
    void OnWebMessage(std::string_view text);

    ChannelFileStream& fileStream() { return fileStream_; }

  private:
    const CommandTable& commands_;
    PageEndpoint& endpoint_;
    ChannelFileStream ownStream_;
    ChannelFileStream& fileStream_;
    void* owner_ = nullptr;
};
