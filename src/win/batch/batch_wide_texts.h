// The batch dialogs' texts by their IDS_ keys, as the system's wide text.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

// The text of a key; the key itself when the table has no such key.
std::wstring BatchWideText(std::string_view key);

// `text` with "%1", "%2", ... replaced by the values in order; other characters stay.
std::wstring WithValues(std::wstring_view text, std::initializer_list<std::wstring_view> values);
