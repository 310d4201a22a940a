#include "url_template.h"

namespace {

// The length of the text placeholder that starts at `pattern[at]` (a '%'), or 0 when there is
// none there.
std::size_t PlaceholderLength(std::wstring_view pattern, std::size_t at) {
    const std::wstring_view rest = pattern.substr(at);
    if (rest.starts_with(L"%s") || rest.starts_with(L"%S"))
        return 2;
    if (rest.starts_with(L"%ls"))
        return 3;
    return 0;
}

}  // namespace

std::wstring FillTemplate(std::wstring_view pattern,
                          std::initializer_list<std::wstring_view> texts) {
    std::wstring out;
    out.reserve(pattern.size());
    auto next = texts.begin();
    std::size_t i = 0;
    while (i < pattern.size()) {
        if (pattern[i] != L'%') {
            out += pattern[i++];
            continue;
        }
        if (pattern.substr(i).starts_with(L"%%")) {
            out += L'%';
            i += 2;
            continue;
        }
        if (const std::size_t length = PlaceholderLength(pattern, i); length > 0) {
            if (next != texts.end())
                out += *next++;
            i += length;
            continue;
        }
        out += pattern[i++];
    }
    return out;
}
