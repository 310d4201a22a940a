#include "text_find.h"

#include <algorithm>

#include "host_document.h"

namespace pdfhost {
namespace {

std::vector<engine::TextMatch> MatchesOn(HostDocument& document, const engine::TextPattern& pattern,
                                         int page) {
    try {
        return pattern.FindAll(*document.TextCache().Get(document.Engine(), page));
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace

std::optional<FoundText> FindInDocument(HostDocument& document, const engine::TextPattern& pattern,
                                        const std::optional<FoundText>& from, int startPage,
                                        bool forward) {
    const int pages = document.Engine().PageCount();
    if (pages <= 0)
        return std::nullopt;
    const int first = std::clamp(from ? from->page : startPage, 0, pages - 1);
    // From a match, its page is looked at twice: past the match first, whole once round.
    const int steps = from ? pages + 1 : pages;
    for (int step = 0; step < steps; ++step) {
        const int page = ((forward ? first + step : first - step) % pages + pages) % pages;
        const std::vector<engine::TextMatch> matches = MatchesOn(document, pattern, page);
        const bool pastFrom = from && step == 0;
        if (forward) {
            for (const engine::TextMatch& match : matches) {
                if (!pastFrom || match.first > from->match.first)
                    return FoundText{page, match};
            }
        } else {
            for (auto it = matches.rbegin(); it != matches.rend(); ++it) {
                if (!pastFrom || it->first < from->match.first)
                    return FoundText{page, *it};
            }
        }
    }
    return std::nullopt;
}

}  // namespace pdfhost
