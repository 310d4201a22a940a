#include "removed_texts.h"

#include "engine/redaction_text.h"

namespace pdfhost {

std::vector<std::u32string> RemovedTextsOf(HostDocument& document,
                                           const std::vector<engine::AnnotationId>& targets) {
    std::vector<std::u32string> texts;
    for (const engine::AnnotationId& target : targets) {
        const engine::RedactionAreas areas =
            engine::AreasOfRedaction(document.Engine(), target.object);
        const auto pageText = document.TextCache().Get(document.Engine(), target.page);
        for (std::u32string& text : engine::TextsUnder(*pageText, areas))
            texts.push_back(std::move(text));
        for (std::u32string& term : document.Terms().Under(target.page, areas))
            texts.push_back(std::move(term));
    }
    return texts;
}

}  // namespace pdfhost
