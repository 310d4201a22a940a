// A command's parameters, read once by the channel that took the request, and the readers of their
// members. Members are read without ever throwing: a member of a value that is not an object is
// absent, and a text that is not a JSON text counts as empty.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>

class CommandParams {
  public:
    // No parameter text at all.
    CommandParams() = default;
    // The parameters as text (UTF-8), parsed here. The text ends at its first NUL character, as
    // the host's wide strings do.
    static CommandParams FromText(std::string_view text);
    // The parameters as the envelope already holds them (anything but a text).
    static CommandParams FromValue(Json::Value value);

    // Whether the request's parameter text was empty.
    bool empty() const { return !fromValue_ && text_.empty(); }
    // Whether the parameters are JSON; when they are not, value() is null.
    bool parsed() const { return parsed_; }
    const Json::Value& value() const { return value_; }
    // The parameters as the request's text, for the log.
    std::string Text() const;

  private:
    Json::Value value_;
    std::string text_;
    bool parsed_ = false;
    bool fromValue_ = false;
};

// The member `key` of `value`, or null when `value` is not an object or lacks it.
const Json::Value& Member(const Json::Value& value, const char* key);

// A value's text as the JSON library gives it (strings as they are, numbers and booleans in their
// text form, null as ""); arrays and objects give "".
std::wstring TextOf(const Json::Value& value);

// `file.id` of the parameters.
std::wstring FileIdOf(const Json::Value& params);
