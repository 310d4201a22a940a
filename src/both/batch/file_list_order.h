// The orders of the batch file list's columns: names and folders as text (case not regarded),
// sizes as numbers with their units, dates by the formats the host may write them in.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

enum class FileListColumn { Name = 0, Folder = 1, Size = 2, Date = 3, Error = 4 };

// The bytes a size text stands for: a decimal number with an optional GB, MB or KB unit.
double SizeTextValue(std::wstring_view text);

// Seconds since 0001-01-01 of a date text, by the first format that reads it; none when no
// format does.
std::optional<int64_t> DateTextValue(std::wstring_view text);

// Whether `a` sorts before `b` in `column`. Dates no format reads sort first.
bool SortsBefore(FileListColumn column, std::wstring_view a, std::wstring_view b);
