#include "batch_watch.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <utility>

namespace pdfhost {
namespace {

BatchWatch* living = nullptr;

}  // namespace

BatchWatch* CurrentBatchWatch() {
    return living;
}

BatchWatch* SetCurrentBatchWatch(BatchWatch* watch) {
    return std::exchange(living, watch);
}

std::map<std::string, int> FindingsByKind(const std::vector<std::string>& names) {
    static constexpr std::string_view kPrefix = "ai_plugin_redact_";
    std::map<std::string, int> findings;
    for (const std::string& name : names) {
        if (!name.starts_with(kPrefix))
            continue;
        const std::string_view rest = std::string_view(name).substr(kPrefix.size());
        const std::size_t end = rest.find('_');
        if (end == std::string_view::npos || end == 0)
            continue;
        const std::string_view kind = rest.substr(0, end);
        if (!std::all_of(kind.begin(), kind.end(),
                         [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; })) {
            continue;
        }
        ++findings[std::string(kind)];
    }
    return findings;
}

}  // namespace pdfhost
