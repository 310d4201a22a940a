// Reading a command's parameter text. Members are read without ever throwing: a member of a value
// that is not an object is absent, and a text that is not a JSON text counts as empty.
#pragma once

#include <json/value.h>

#include <string>

// Parses the wide parameter text; false when it is not JSON.
bool ParseParams(const std::wstring& params, Json::Value& out);

// The member `key` of `value`, or null when `value` is not an object or lacks it.
const Json::Value& Member(const Json::Value& value, const char* key);

// A value's text as the JSON library gives it (strings as they are, numbers and booleans in their
// text form, null as ""); arrays and objects give "".
std::wstring TextOf(const Json::Value& value);

// `file.id` of the parameters.
std::wstring FileIdOf(const Json::Value& params);
