#include "search_memory.h"

namespace pdfhost {

void SearchMemory::RecordText(int page, std::shared_ptr<const std::u32string> needle,
                              std::uint32_t flags, std::vector<engine::MatchPlacement> hits) {
    pages_[page] = PageSearch{std::move(needle), flags, std::move(hits), {}};
}

void SearchMemory::RecordFields(int page, std::shared_ptr<const std::u32string> needle,
                                std::uint32_t flags, std::vector<FieldHit> hits) {
    PageSearch& search = pages_[page];
    const bool sameNeedle = search.needle != nullptr && needle != nullptr &&
                            (search.needle == needle || *search.needle == *needle);
    if (!sameNeedle || search.flags != flags)
        search = PageSearch{std::move(needle), flags, {}, {}};
    search.fields = std::move(hits);
}

std::optional<SearchHit> SearchMemory::Find(int page, int ordinal) const {
    const auto it = pages_.find(page);
    if (it == pages_.end() || ordinal < 0)
        return std::nullopt;
    const PageSearch& search = it->second;
    const auto index = static_cast<std::size_t>(ordinal);
    if (index < search.text.size())
        return search.text[index];
    if (index - search.text.size() < search.fields.size())
        return search.fields[index - search.text.size()];
    return std::nullopt;
}

void SearchMemory::FieldEdited(NdxFormField field, const std::u32string& before,
                               const engine::TextMatch& replaced, const std::u32string& inserted) {
    std::u32string after = before;
    after.replace(static_cast<std::size_t>(replaced.first),
                  static_cast<std::size_t>(replaced.count), inserted);
    const int shift = static_cast<int>(inserted.size()) - replaced.count;
    for (auto& [page, search] : pages_) {
        for (FieldHit& hit : search.fields) {
            if (hit.field != field || hit.value != before)
                continue;
            hit.value = after;
            if (hit.match == replaced) {
                hit.match.count = static_cast<int>(inserted.size());
            } else if (hit.match.first >= replaced.first + replaced.count) {
                hit.match.first += shift;
            }
        }
    }
}

}  // namespace pdfhost
