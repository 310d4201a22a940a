// The numbered text of a document's pages, kept for the pages read last. Building it dominates
// every search, and a search reads each page for every term in turn, so the most recent pages
// are kept; the number kept is bounded, so a long document is read in a fixed amount of memory.
// A revision change drops the old texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>

#include "engine/document.h"
#include "engine/text_page.h"

namespace pdfhost {

class PageTextCache {
  public:
    static constexpr std::size_t kMaxPages = 32;

    // The text of page `page` at the document's current revision. Throws engine::Error for a
    // page out of range or one MuPDF cannot read.
    std::shared_ptr<const engine::PageText> Get(const engine::Document& document, int page);

    std::size_t Size() const { return pages_.size(); }

  private:
    struct Entry {
        std::shared_ptr<const engine::PageText> text;
        std::list<int>::iterator use;  // the page's place in `order_`
    };

    std::uint64_t revision_ = 0;
    std::unordered_map<int, Entry> pages_;
    std::list<int> order_;  // page numbers, most recently read first
};

}  // namespace pdfhost
