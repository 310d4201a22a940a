// The two JSON operations of the bridge: the tolerant reader (comments not collected) and the
// compact writer. Replies are written by this writer, so their bytes — key order, escapes, the
// trailing line feed — are the writer's.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>

// Parses `text` into `out`. Returns whether the parse succeeded; on failure `out` holds what the
// reader had built up to the error (often null).
bool ParseJson(std::string_view text, Json::Value& out);

// Compact JSON text, keys in order, ending in one line feed.
std::string WriteJson(const Json::Value& value);

// Indented JSON text for log lines.
std::string WriteStyledJson(const Json::Value& value);
