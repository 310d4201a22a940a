// The numbered text of a document's pages, built once per page and document revision. Building
// it dominates every search, so a page that has not changed is never read twice; a revision
// change drops the old texts.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "engine/document.h"
#include "engine/text_page.h"

namespace pdfhost {

class PageTextCache {
  public:
    // The text of page `page` at the document's current revision. Throws engine::Error for a
    // page out of range or one MuPDF cannot read.
    std::shared_ptr<const engine::PageText> Get(const engine::Document& document, int page);

  private:
    std::uint64_t revision_ = 0;
    std::unordered_map<int, std::shared_ptr<const engine::PageText>> pages_;
};

}  // namespace pdfhost
