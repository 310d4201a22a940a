#include "page_text_cache.h"

namespace pdfhost {

std::shared_ptr<const engine::PageText> PageTextCache::Get(const engine::Document& document,
                                                           int page) {
    if (document.Revision() != revision_) {
        pages_.clear();
        order_.clear();
        revision_ = document.Revision();
    }
    if (const auto it = pages_.find(page); it != pages_.end()) {
        order_.splice(order_.begin(), order_, it->second.use);
        return it->second.text;
    }
    auto text = std::make_shared<const engine::PageText>(engine::PageText::OfPage(document, page));
    if (pages_.size() >= kMaxPages) {
        pages_.erase(order_.back());
        order_.pop_back();
    }
    order_.push_front(page);
    pages_.emplace(page, Entry{text, order_.begin()});
    return text;
}

}  // namespace pdfhost
