#include "web_message_channel.h"

#include <json/value.h>

#include <exception>

#include "bridge/command_table.h"
#include "bridge/json_text.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

// The text form of an envelope element: strings as they are, numbers and booleans in the
// library's text form, null as "". Arrays and objects have none: asString throws.
std::wstring ElementText(const Json::Value& element) {
    return FromUtf8(element.asString());
}

}  // namespace

void WebMessageChannel::OnWebMessage(std::string_view text) {
    Json::Value envelope;
    ParseJson(text, envelope);  // the value is used in whatever state the parse left it
    if (!envelope.isNull() && !envelope.isArray())
        return;
    if (envelope.size() != 4) {
        endpoint_.PostWebMessageAsString(kBadEnvelopeReply);
        return;
    }

    std::wstring module;
    std::wstring command;
    std::wstring identifier;
    try {
        module = ElementText(envelope[0]);
        command = ElementText(envelope[1]);
        identifier = ElementText(envelope[3]);
    } catch (const std::exception& e) {
        // An array or object where a text belongs: the request is dropped without a reply.
        AsyncLogger::Instance().Log(kLogError, "Dropped a page message (%): %", e.what(),
                                    std::string(text));
        return;
    }
    // A text is the parameters' JSON text; anything else is the parameters themselves.
    Json::Value& element = envelope[2];
    const CommandParams params = element.isString() ? CommandParams::FromText(element.asString())
                                                    : CommandParams::FromValue(std::move(element));

    const std::optional<std::wstring> reply = ContainedReply(
        [&] {
            auto dispatcher =
                commands_.Create(module, command, CommandRequest{owner_, params, fileStream_});
            dispatcher->uuid = identifier;
            return dispatcher->Dispatch(command.c_str());
        },
        text);
    if (reply)
        endpoint_.PostWebMessageAsString(*reply);
}
