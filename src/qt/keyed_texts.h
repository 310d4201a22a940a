// A table of the plug-in's dialog texts by their IDS_ keys, and its lookup.
#pragma once

#include <QString>
#include <span>
#include <string_view>

#include "app/dialog_text_table.h"

// The text of `key` in `table`; the key itself when the table has no such key.
QString TextOfKey(std::span<const KeyedText> table, std::string_view key);
