// Every text searched on a document and where its matches stood, page by page, so that an
// apply knows which searched terms lie under its boxes: the words the user looked for are
// removed wherever else the document holds them, not only the characters under the boxes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "engine/geometry.h"
#include "engine/redaction_areas.h"

namespace pdfhost {

class SearchedTerms {
  public:
    // The matches of `needle` found on `page`: one or more boxes each, PDF page space.
    void Record(int page, const std::u32string& needle, const std::vector<engine::Rect>& boxes);

    // The needles with a match on `page` that touches `areas`.
    std::vector<std::u32string> Under(int page, const engine::RedactionAreas& areas) const;

  private:
    // page -> needle -> boxes of its matches there
    std::map<int, std::map<std::u32string, std::vector<engine::Rect>>> pages_;
};

}  // namespace pdfhost
