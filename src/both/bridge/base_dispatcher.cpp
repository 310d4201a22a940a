#include "base_dispatcher.h"

#include "bridge/error_codes.h"
#include "bridge/json_text.h"
#include "logging/async_logger.h"
#include "util/utf.h"

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

std::wstring BaseDispatcher::Dispatch(const wchar_t* commandName) {
    AsyncLogger& logger = AsyncLogger::Instance();
    const std::string name = commandName != nullptr ? ToUtf8(commandName) : "unitTest";
    if (logger.Enabled(kLogInfo)) {
        logger.Log(kLogInfo, "Get Dispatch % input:  %", name, ToUtf8(params));
    }
    const std::string reply = WriteJson(Run());
    if (logger.Enabled(kLogInfo))
        logger.Log(kLogInfo, "Dispatch %  output : % ", name, reply);
    return FromUtf8(reply);
}
