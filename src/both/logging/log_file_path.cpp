#include "log_file_path.h"

#include <charconv>
#include <optional>

#include "local_time.h"
#include "util/wide_path.h"

namespace {

struct RotatedName {
    std::string stem;       // the name without rotation number and extension
    std::string extension;  // from the last "." on, or empty
    std::optional<unsigned long long> number;
};

RotatedName SplitRotatedName(const std::string& fileName) {
    RotatedName name;
    const std::size_t dot = fileName.rfind('.');
    name.stem = fileName.substr(0, dot);
    if (dot != std::string::npos)
        name.extension = fileName.substr(dot);

    const std::size_t underscore = name.stem.rfind('_');
    if (underscore == std::string::npos)
        return name;
    const char* first = name.stem.data() + underscore + 1;
    const char* last = name.stem.data() + name.stem.size();
    unsigned long long number = 0;
    const auto [end, error] = std::from_chars(first, last, number);
    if (first == last || error != std::errc() || end != last)
        return name;
    name.number = number;
    name.stem.resize(underscore);
    return name;
}

}  // namespace

std::filesystem::path DailyLogPath(const std::filesystem::path& base, const std::tm& localDate) {
    // One component per part of the date, joined by the path's own separator.
    return base / FormatTime(localDate, "%Y") / FormatTime(localDate, "%m") /
           FormatTime(localDate, "%d.txt");
}

std::filesystem::path NextRotatedPath(const std::filesystem::path& path) {
    const RotatedName name = SplitRotatedName(Utf8OfPath(path.filename()));
    const unsigned long long next = name.number ? *name.number + 1 : 1;
    return path.parent_path() / PathOfUtf8(name.stem + "_" + std::to_string(next) + name.extension);
}

std::filesystem::path PlainLogPath(const std::filesystem::path& path) {
    const RotatedName name = SplitRotatedName(Utf8OfPath(path.filename()));
    return path.parent_path() / PathOfUtf8(name.stem + name.extension);
}
