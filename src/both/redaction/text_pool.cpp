#include "text_pool.h"

std::wstring_view TextPool::Hold(std::wstring_view text) {
    if (text.empty())
        return {};
    auto found = counts_.find(text);
    if (found == counts_.end())
        found = counts_.emplace(std::wstring(text), 0).first;
    ++found->second;
    return found->first;
}

void TextPool::Release(std::wstring_view text) {
    if (text.empty())
        return;
    const auto found = counts_.find(text);
    if (found != counts_.end() && --found->second == 0)
        counts_.erase(found);
}
