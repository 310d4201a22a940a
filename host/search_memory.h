// The matches of the last search on each page of one document, by ordinal: the matches in the
// page's text first, then those in its form fields, as a search numbers them. HostDocReplaceText
// names a match by page and ordinal only, so the ordinal refers to the last search that ran on
// that page (a text finder started there; a field finder started there after it with the same
// text and flags adds its matches behind). What is kept is where each match stood when it was
// found, so the ordinals keep their meaning while matches of the page are replaced one by one.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "engine/text_finder.h"
#include "engine/text_replacer.h"
#include "host_abi.h"

namespace pdfhost {

// A match in the value of a form field.
struct FieldHit {
    NdxFormField field = nullptr;
    std::u32string value;  // the value as it was searched
    engine::TextMatch match;
};

using SearchHit = std::variant<engine::MatchPlacement, FieldHit>;

class SearchMemory {
  public:
    // A text finder started on `page`: its matches replace what the page remembered.
    void RecordText(int page, std::shared_ptr<const std::u32string> needle, std::uint32_t flags,
                    std::vector<engine::MatchPlacement> hits);
    // A field finder started on `page`: its matches follow those of the text finder that ran
    // with the same needle and flags, or stand alone.
    void RecordFields(int page, std::shared_ptr<const std::u32string> needle, std::uint32_t flags,
                      std::vector<FieldHit> hits);

    std::optional<SearchHit> Find(int page, int ordinal) const;

    // A field's value changed from `before` by putting `inserted` in place of `replaced`: hits
    // on that value move with the text behind it, and those on the replaced characters cover
    // the inserted ones.
    void FieldEdited(NdxFormField field, const std::u32string& before,
                     const engine::TextMatch& replaced, const std::u32string& inserted);

  private:
    struct PageSearch {
        std::shared_ptr<const std::u32string> needle;  // shared by the pages of one search
        std::uint32_t flags = 0;
        std::vector<engine::MatchPlacement> text;
        std::vector<FieldHit> fields;
    };

    std::unordered_map<int, PageSearch> pages_;
};

}  // namespace pdfhost
