// BaseDispatcher: one bridge request. A command class overrides Run; Dispatch logs the request,
// runs it and writes the reply text.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include <json/value.h>

#include "bridge/command_params.h"

#include <cstdint>
#include <string>

class BaseDispatcher {
  public:
    // `params` outlives the dispatcher: the channel holds them for the request.
    explicit BaseDispatcher(const CommandParams& params = kNoParams) : params(params) {}
    virtual ~BaseDispatcher() = default;
    BaseDispatcher(const BaseDispatcher&) = delete;
    BaseDispatcher& operator=(const BaseDispatcher&) = delete;

    // The reply as a JSON value. The base reply is the unknown-command answer, which never carries
    // the request's identifier.
    virtual Json::Value Run();

    // {"data": data, "ret": code} plus "uuid" when the request carried an identifier.
    virtual Json::Value MakeResult(int32_t code, const Json::Value& data);

    // Logs the request, runs it and returns the compact reply text (with its trailing line feed).
    // A null command name is logged as "unitTest".
    std::wstring Dispatch(const wchar_t* commandName);

    // The parameters of a request without any.
    static const CommandParams kNoParams;

    const CommandParams& params;
    std::wstring uuid;
    // Raised at every request as a sign of life of the page, for the progress bar's watchdog;
    // null when there is none.
    bool* activity = nullptr;

  protected:
    // MakeResult with a null `data`.
    Json::Value Fail(int32_t code) { return MakeResult(code, Json::Value()); }

    // The reply of Run as compact JSON text. A command with a bulky reply may write the text
    // itself, byte for byte as the writer would.
    virtual std::string ReplyText();
    // The reply as wide text, for when nobody logs its UTF-8 text. A command with a bulky reply may
    // widen its parts without joining them first.
    virtual std::wstring WideReplyText();
};

// Runs the whole handling of one request and gives its reply. A failure that escapes it (an
// allocation that fails, a fault inside a command) is logged as an error and leaves the request
// without a reply, as for an envelope the page framed wrongly: it never reaches the host.
std::optional<std::wstring> ContainedReply(const std::function<std::wstring()>& handle,
                                           std::string_view request) noexcept;
