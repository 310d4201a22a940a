// CreateDispatcher: the command factory of the bridge. Module "base" and a command of the table
// build that command's class; anything else builds the plain BaseDispatcher, whose reply is the
// unknown-command answer.
#pragma once

#include <memory>
#include <string>

#include "bridge/base_dispatcher.h"
#include "document/channel_file_stream.h"

class Brevan;

// `owner` is the page dialog of a host-browser channel, null on the browser channel.
std::unique_ptr<BaseDispatcher> CreateDispatcher(Brevan& app, void* owner,
                                                 const std::wstring& command,
                                                 const std::wstring& module,
                                                 const std::wstring& paramText,
                                                 ChannelFileStream& fileStream);
