#include "command_params.h"

#include "bridge/json_text.h"
#include "util/utf.h"

bool ParseParams(const std::wstring& params, Json::Value& out) {
    return ParseJson(ToUtf8(params), out);
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
