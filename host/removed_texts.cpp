#include "removed_texts.h"

#include <algorithm>
#include <unordered_set>

#include "engine/redaction_text.h"

namespace pdfhost {

std::vector<std::u32string> RemovedTextsOf(HostDocument& document,
                                           const std::vector<engine::AnnotationId>& targets) {
    // Page by page, so that each page's text is read once however the targets are ordered.
    std::vector<engine::AnnotationId> byPage = targets;
    std::stable_sort(byPage.begin(), byPage.end(),
                     [](const engine::AnnotationId& a, const engine::AnnotationId& b) {
                         return a.page < b.page;
                     });
    std::vector<std::u32string> texts;
    std::unordered_set<std::u32string> seen;
    const auto keep = [&](std::u32string text) {
        if (seen.insert(text).second)
            texts.push_back(std::move(text));
    };
    for (std::size_t at = 0; at < byPage.size();) {
        // A page's text and the centres of its glyphs serve all of the page's targets.
        const int page = byPage[at].page;
        const auto pageText = document.TextCache().Get(document.Engine(), page);
        const engine::GlyphCentres centres(*pageText);
        for (; at < byPage.size() && byPage[at].page == page; ++at) {
            const engine::AnnotationId& target = byPage[at];
            const engine::RedactionAreas areas =
                engine::AreasOfRedaction(document.Engine(), target.object);
            for (std::u32string& text : engine::TextsUnder(*pageText, areas, centres))
                keep(std::move(text));
            for (std::u32string& term : document.Terms().Under(target.page, areas))
                keep(std::move(term));
        }
    }
    return texts;
}

}  // namespace pdfhost
