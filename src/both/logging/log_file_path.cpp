#include "log_file_path.h"

#include <charconv>
#include <optional>

#include "local_time.h"

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

std::filesystem::path PathFromUtf8(std::string_view text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string PathToUtf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

std::filesystem::path DailyLogPath(const std::filesystem::path& base, const std::tm& localDate) {
    return base / PathFromUtf8(FormatTime(localDate, "%Y/%m/%d.txt"));
}

std::filesystem::path NextRotatedPath(const std::filesystem::path& path) {
    const RotatedName name = SplitRotatedName(PathToUtf8(path.filename()));
    const unsigned long long next = name.number ? *name.number + 1 : 1;
    return path.parent_path() /
           PathFromUtf8(name.stem + "_" + std::to_string(next) + name.extension);
}

std::filesystem::path PlainLogPath(const std::filesystem::path& path) {
    const RotatedName name = SplitRotatedName(PathToUtf8(path.filename()));
    return path.parent_path() / PathFromUtf8(name.stem + name.extension);
}
