#include "page_client.h"

#include <memory>

namespace testhost {

std::string JsonText(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return Json::writeString(builder, value);
}

std::optional<Json::Value> ParseJson(const std::string& text) {
    Json::CharReaderBuilder builder;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value value;
    std::string errors;
    if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors))
        return std::nullopt;
    return value;
}

std::optional<Json::Value> EventOf(const std::string& script) {
    constexpr std::string_view kCall = "window.__dispatchEvent(";
    const std::size_t call = script.find(kCall);
    const std::size_t end = script.rfind(')');
    if (call == std::string::npos || end == std::string::npos || end < call + kCall.size())
        return std::nullopt;
    const std::size_t start = call + kCall.size();
    return ParseJson(script.substr(start, end - start));
}

std::vector<std::string> KeysOf(const Json::Value& object) {
    if (!object.isObject())
        return {};
    return object.getMemberNames();  // jsoncpp keeps members in key order
}

std::vector<std::string> PageClient::Exchange(const std::string& text) {
    channel_.Post(text);
    const std::deque<std::string> replies = channel_.TakeReplies();
    return {replies.begin(), replies.end()};
}

std::optional<std::string> PageClient::Request(const std::string& command,
                                               const Json::Value& params, const std::string& id) {
    Json::Value request(Json::arrayValue);
    request.append("base");
    request.append(command);
    request.append(params);
    request.append(id);
    const std::vector<std::string> replies = Exchange(JsonText(request));
    if (replies.size() != 1)
        return std::nullopt;
    return replies.front();
}

std::vector<Json::Value> PageClient::TakeEvents() {
    std::vector<Json::Value> events;
    for (const std::string& script : channel_.TakeScripts()) {
        if (std::optional<Json::Value> event = EventOf(script))
            events.push_back(std::move(*event));
    }
    return events;
}

}  // namespace testhost
