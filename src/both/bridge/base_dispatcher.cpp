#include "base_dispatcher.h"

#include <exception>

#include "bridge/error_codes.h"
#include "bridge/json_text.h"
#include "bridge/wide_reply.h"
#include "logging/async_logger.h"
#include "util/utf.h"

const CommandParams BaseDispatcher::kNoParams;

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
    if (activity != nullptr)
        *activity = true;
    AsyncLogger& logger = AsyncLogger::Instance();
    const std::string name = commandName != nullptr ? ToUtf8(commandName) : "unitTest";
    if (logger.Enabled(kLogInfo)) {
        logger.Log(kLogInfo, "Get Dispatch % input:  %", name, params.Text());
    }
    if (!logger.Enabled(kLogInfo))
        return WideReplyText();
    const std::string reply = ReplyText();
    logger.Log(kLogInfo, "Dispatch %  output : % ", name, reply);
    return WidenReply({reply});
}

std::wstring BaseDispatcher::WideReplyText() {
    return WidenReply({ReplyText()});
}

std::optional<std::wstring> ContainedReply(const std::function<std::wstring()>& handle,
                                           std::string_view request) noexcept {
    const char* reason = "unknown failure";
    try {
        return handle();
    } catch (const std::exception& e) {
        reason = e.what();
    } catch (...) {
    }
    try {
        AsyncLogger::Instance().Log(kLogError, "Request failed without a reply (%): %", reason,
                                    std::string(request.substr(0, 1024)));
    } catch (...) {
    }
    return std::nullopt;
}
