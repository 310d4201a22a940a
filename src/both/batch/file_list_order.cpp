#include "file_list_order.h"

#include <algorithm>
#include <cstdio>
#include <cwctype>
#include <stdexcept>
#include <string>

namespace {

struct SizeUnit {
    std::wstring_view name;  // lower case
    double factor;
};

// Tried in this order; the first found gives the factor.
constexpr SizeUnit kSizeUnits[] = {
    {L"gb", 1073741824.0},
    {L"mb", 1048576.0},
    {L"kb", 1024.0},
};

bool IsWordCharacter(wchar_t c) {
    return c == L'_' || (c < 0x80 && std::iswalnum(static_cast<wint_t>(c)));
}

// Whether `unit` stands in `text`, in any case, ending a word.
bool HasUnit(std::wstring_view text, std::wstring_view unit) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](wchar_t c) {
        return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    });
    for (std::size_t at = lower.find(unit); at != std::wstring::npos;
         at = lower.find(unit, at + 1)) {
        const std::size_t end = at + unit.size();
        if (end == lower.size() || !IsWordCharacter(lower[end]))
            return true;
    }
    return false;
}

struct DateFormat {
    const char* pattern;   // six fields: year, month, day or their order below, hours, minutes,
                           // seconds; each ends in %n to tell that the whole pattern matched
    int year, month, day;  // which of the first three fields holds each
    int addHours;
};

const DateFormat kDateFormats[] = {
    {"%4d-%2d-%2d %2d:%2d:%2d pm%n", 0, 1, 2, 12}, {"%4d-%2d-%2d %2d:%2d:%2d am%n", 0, 1, 2, 0},
    {"%d-%d-%4d %d:%2d:%2d%n", 2, 0, 1, 0},        {"%2d/%2d/%4d %2d:%2d:%2d %n", 2, 0, 1, 0},
    {"%4d/%2d/%2d %2d:%2d:%2d %n", 0, 1, 2, 0},    {"%2d-%2d-%4d %2d:%2d:%2d%n", 2, 0, 1, 0},
    {"%d/%d/%4d %d:%2d:%2d%n", 2, 0, 1, 0},        {"%4d-%2d-%2d %2d:%2d:%2d%n", 0, 1, 2, 0},
};

// Days from 0001-01-01 in the proleptic Gregorian calendar.
int64_t DaysOf(int64_t year, int64_t month, int64_t day) {
    year -= month <= 2 ? 1 : 0;
    const int64_t era = year / 400;
    const int64_t yearOfEra = year - era * 400;
    const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra;
}

std::string NarrowLower(std::wstring_view text) {
    std::string narrow;
    for (wchar_t c : text)
        narrow += c < 0x80 ? static_cast<char>(std::towlower(static_cast<wint_t>(c))) : '?';
    return narrow;
}

int CompareIgnoringCase(std::wstring_view a, std::wstring_view b) {
    const auto lower = [](wchar_t c) { return std::towlower(static_cast<wint_t>(c)); };
    const auto [ia, ib] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                                        [&](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
    if (ia == a.end())
        return ib == b.end() ? 0 : -1;
    if (ib == b.end())
        return 1;
    return lower(*ia) < lower(*ib) ? -1 : 1;
}

}  // namespace

double SizeTextValue(std::wstring_view text) {
    const std::wstring whole(text);
    double value = 0;
    try {
        value = std::stod(whole);
    } catch (const std::exception&) {
        return 0;
    }
    for (const SizeUnit& unit : kSizeUnits) {
        if (HasUnit(whole, unit.name))
            return value * unit.factor;
    }
    return value;
}

std::optional<int64_t> DateTextValue(std::wstring_view text) {
    const std::string narrow = NarrowLower(text);
    for (const DateFormat& format : kDateFormats) {
        int fields[6] = {};
        int consumed = -1;
        const int read = std::sscanf(narrow.c_str(), format.pattern, &fields[0], &fields[1],
                                     &fields[2], &fields[3], &fields[4], &fields[5], &consumed);
        if (read != 6 || consumed < 0)
            continue;
        const int64_t days = DaysOf(fields[format.year], fields[format.month], fields[format.day]);
        const int64_t hours = fields[3] + format.addHours;
        return (days * 24 + hours) * 3600 + fields[4] * 60 + fields[5];
    }
    return std::nullopt;
}

bool SortsBefore(FileListColumn column, std::wstring_view a, std::wstring_view b) {
    switch (column) {
        case FileListColumn::Size:
            return SizeTextValue(a) < SizeTextValue(b);
        case FileListColumn::Date:
            return DateTextValue(a) < DateTextValue(b);
        default:
            return CompareIgnoringCase(a, b) < 0;
    }
}
