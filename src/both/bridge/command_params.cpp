#include "command_params.h"

#include <utility>

#include "bridge/json_text.h"
#include "util/utf.h"

CommandParams CommandParams::FromText(std::string_view text) {
    CommandParams params;
    params.text_ = text.substr(0, text.find('\0'));
    params.parsed_ = ParseJson(params.text_, params.value_);
    if (!params.parsed_)
        params.value_ = Json::Value();
    return params;
}

CommandParams CommandParams::FromValue(Json::Value value) {
    CommandParams params;
    params.value_ = std::move(value);
    params.parsed_ = true;
    params.fromValue_ = true;
    return params;
}

std::string CommandParams::Text() const {
    return fromValue_ ? WriteJson(value_) : text_;
}

const Json::Value& Member(const Json::Value& value, const char* key) {
    static const Json::Value kNull;
    if (!value.isObject())
        return kNull;
    const Json::Value* found = value.find(key, key + std::char_traits<char>::length(key));
    return found != nullptr ? *found : kNull;
}

std::wstring TextOf(const Json::Value& value) {
    if (value.isArray() || value.isObject())
        return {};
    return FromUtf8(value.asString());
}

std::wstring FileIdOf(const Json::Value& params) {
    return TextOf(Member(Member(params, "file"), "id"));
}
