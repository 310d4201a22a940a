// Readers of the argument kinds the search and redaction commands share. None throws: a value of
// the wrong kind reads as absent.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>

// A value of JSON integer type (not a number with a fraction, nor 1.0); integers above the
// largest signed 64-bit value read as that value.
std::optional<int64_t> JsonInteger(const Json::Value& value);

// A JSON number (integer or not) or boolean as a float, clamped to the float range.
std::optional<float> JsonFloat(const Json::Value& value);

// `index` as the marking and annotation commands take it: a JSON integer, not negative.
std::optional<int64_t> ListIndexOf(const Json::Value& params);

// The longest search text taken, in UTF-8 bytes: far more than a page holds, so a longer one can
// never match, and refusing it keeps a search's cost bounded by the document, not the request.
inline constexpr std::size_t kMaxSearchTextBytes = 64 * 1024;

// Whether `value` is a text too long to search.
inline bool IsOverlongText(const Json::Value& value) {
    const char* begin = nullptr;
    const char* end = nullptr;
    return value.isString() && value.getString(&begin, &end) &&
           static_cast<std::size_t>(end - begin) > kMaxSearchTextBytes;
}

bool StartsWith(const std::wstring& text, const std::wstring& prefix);

// The prefixes of the unique id names: of match annotations, and the longer one of point notes.
inline const std::wstring kMatchAnnotPrefix = L"ai_plugin_";
inline const std::wstring kPointNotePrefix = L"ai_plugin_pt_";
