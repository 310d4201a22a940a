#include "system_name.h"

#include <map>

namespace {

constexpr const char* kOsReleaseFiles[] = {"/etc/os-release", "/usr/lib/os-release"};

// A value as the shell would read it: quotes removed, backslash escapes resolved inside double
// quotes and outside quotes.
std::string Unquote(std::string_view raw) {
    std::string out;
    char quote = 0;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const char c = raw[i];
        if (quote == '\'') {
            if (c == '\'')
                quote = 0;
            else
                out += c;
        } else if (c == '\\' && i + 1 < raw.size()) {
            out += raw[++i];
        } else if (c == '"' || (c == '\'' && quote == 0)) {
            quote = quote == c ? 0 : c;
        } else {
            out += c;
        }
    }
    return out;
}

std::map<std::string, std::string> Assignments(std::string_view text) {
    std::map<std::string, std::string> values;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos)
            end = text.size();
        std::string_view line = text.substr(start, end - start);
        start = end + 1;
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t'))
            line.remove_suffix(1);
        const std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string_view::npos || line[first] == '#')
            continue;
        line.remove_prefix(first);
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || equals == 0)
            continue;
        values[std::string(line.substr(0, equals))] = Unquote(line.substr(equals + 1));
    }
    return values;
}

}  // namespace

std::string SystemNameFromOsRelease(std::string_view text) {
    const std::map<std::string, std::string> values = Assignments(text);
    const auto find = [&](const char* key) {
        const auto it = values.find(key);
        return it != values.end() ? it->second : std::string();
    };
    if (std::string pretty = find("PRETTY_NAME"); !pretty.empty())
        return pretty;
    std::string name = find("NAME");
    const std::string version = find("VERSION_ID");
    if (name.empty())
        return {};
    if (!version.empty())
        name += " " + version;
    return name;
}

std::string SystemName(const FileReader& read) {
    for (const char* path : kOsReleaseFiles) {
        if (const std::optional<std::string> text = read(path))
            return SystemNameFromOsRelease(*text);
    }
    return {};
}
