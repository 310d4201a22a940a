#include "page_text_cache.h"

namespace pdfhost {

std::shared_ptr<const engine::PageText> PageTextCache::Get(const engine::Document& document,
                                                           int page) {
    if (document.Revision() != revision_) {
        pages_.clear();
        revision_ = document.Revision();
    }
    if (const auto it = pages_.find(page); it != pages_.end())
        return it->second;
    auto text = std::make_shared<const engine::PageText>(engine::PageText::OfPage(document, page));
    pages_.emplace(page, text);
    return text;
}

}  // namespace pdfhost
