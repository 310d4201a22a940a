// The texts of the batch dialogs, by their IDS_ keys.
#pragma once

#include <QString>
#include <string_view>

// The text of a key; the key itself when the table has no such key.
QString BatchText(std::string_view key);
