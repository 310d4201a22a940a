#include "base_dispatcher.h"

#include <cstring>

#include "app/progress_bar_host.h"
#include "bridge/error_codes.h"
#include "bridge/json_text.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

constexpr std::size_t kWidenChunk = 1024;

// Widens one chunk; false when it holds a byte beyond ASCII. A fixed count over buffers that
// cannot overlap, so the compiler does it in vectors.
bool WidenAsciiChunk(const unsigned char* __restrict from, wchar_t* __restrict to) {
    unsigned char seen = 0;
    for (std::size_t i = 0; i < kWidenChunk; ++i) {
        seen |= from[i];
        to[i] = static_cast<wchar_t>(from[i]);
    }
    return seen < 0x80;
}

// The reply as wide text. The writer escapes every character beyond ASCII, and a file block can be
// megabytes of base64, so the ASCII run at the front is widened directly, through a small buffer
// that stays in the cache, and only what follows it goes through the UTF-8 decoder. An ASCII byte
// never belongs to a longer sequence, so the split changes nothing in the result.
std::wstring WideReply(const std::string& utf8) {
    std::wstring wide;
    wide.reserve(utf8.size());
    const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
    wchar_t chunk[kWidenChunk];
    std::size_t done = 0;
    for (; done + kWidenChunk <= utf8.size() && WidenAsciiChunk(bytes + done, chunk);
         done += kWidenChunk)
        wide.append(chunk, kWidenChunk);
    for (; done < utf8.size() && bytes[done] < 0x80; ++done)
        wide.push_back(static_cast<wchar_t>(bytes[done]));
    if (done < utf8.size())
        wide += FromUtf8(std::string_view(utf8).substr(done));
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
