// The texts of the plug-in's own dialogs by their IDS_ keys, in English, the one language the
// plug-in starts in; each platform's dialogs look them up here.
#pragma once

#include <span>
#include <string_view>

struct KeyedText {
    std::string_view key;
    const char* text;  // UTF-8
};

// The text of `key` in `table`; the key itself when the table has no such key.
std::string_view KeyedTextOf(std::span<const KeyedText> table, std::string_view key);

// The text of a key of the welcome and info dialogs.
std::string_view DialogTextOf(std::string_view key);

// The batch dialogs' texts, and the text of one of their keys.
std::span<const KeyedText> BatchTexts();
std::string_view BatchTextOf(std::string_view key);
