#include "base_dispatcher.h"

#include <cstring>

#include "app/progress_bar_host.h"
#include "bridge/error_codes.h"
#include "bridge/json_text.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

// The reply as wide text. The writer escapes every character beyond ASCII, and a file block can be
// megabytes of base64, so the ASCII run at the front is widened directly and only what follows it
// goes through the UTF-8 decoder. An ASCII byte never belongs to a longer sequence, so the split
// changes nothing in the result.
std::wstring WideReply(const std::string& utf8) {
    constexpr uint64_t kHighBits = 0x8080808080808080u;
    std::size_t ascii = 0;
    for (uint64_t word = 0; ascii + sizeof word <= utf8.size(); ascii += sizeof word) {
        std::memcpy(&word, utf8.data() + ascii, sizeof word);
        if ((word & kHighBits) != 0)
            break;
    }
    while (ascii < utf8.size() && static_cast<unsigned char>(utf8[ascii]) < 0x80)
        ++ascii;
    std::wstring wide(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(ascii));
    if (ascii < utf8.size())
        wide += FromUtf8(std::string_view(utf8).substr(ascii));
    return wide;
}

}  // namespace

Json::Value BaseDispatcher::Run() {
    Json::Value reply(Json::objectValue);
    reply["data"] = Json::Value();
    reply["ret"] = err::kUnknownCommand;
    return reply;
}

Json::Value BaseDispatcher::MakeResult(int32_t code, const Json::Value& data) {
    Json::Value reply(Json::objectValue);
    reply["ret"] = code;
    reply["data"] = data;
    if (!uuid.empty())
        reply["uuid"] = ToUtf8(uuid);
    return reply;
}

std::string BaseDispatcher::ReplyText() {
    return WriteJson(Run());
}

std::wstring BaseDispatcher::Dispatch(const wchar_t* commandName) {
    if (progressBar != nullptr)
        progressBar->activity = true;
    AsyncLogger& logger = AsyncLogger::Instance();
    const std::string name = commandName != nullptr ? ToUtf8(commandName) : "unitTest";
    if (logger.Enabled(kLogInfo)) {
        logger.Log(kLogInfo, "Get Dispatch % input:  %", name, ToUtf8(params));
    }
    const std::string reply = ReplyText();
    if (logger.Enabled(kLogInfo))
        logger.Log(kLogInfo, "Dispatch %  output : % ", name, reply);
    return WideReply(reply);
}
