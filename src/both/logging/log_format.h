// Message texts of log calls: each "%" of the format takes the next argument as stream output.
// There are no width or type options. A "%" without an argument stays as it is; arguments
// without a "%" are left out. Wide texts must be turned into UTF-8 before (the standard stream
// refuses them).
#pragma once

#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>

template <typename... Args>
std::string FormatLogMessage(std::string_view format, const Args&... args) {
    std::ostringstream out;
    std::size_t pos = 0;
    bool placeholdersLeft = true;
    [[maybe_unused]] auto substitute = [&](const auto& arg) {
        if (!placeholdersLeft)
            return;
        const std::size_t mark = format.find('%', pos);
        if (mark == std::string_view::npos) {
            placeholdersLeft = false;
            return;
        }
        out << format.substr(pos, mark - pos) << arg;
        pos = mark + 1;
    };
    (substitute(args), ...);
    out << format.substr(pos);
    return out.str();
}
