#include "batch_wide_texts.h"

#include "app/dialog_text_table.h"
#include "util/utf.h"

std::wstring BatchWideText(std::string_view key) {
    return FromUtf8(BatchTextOf(key));
}

std::wstring WithValues(std::wstring_view text, std::initializer_list<std::wstring_view> values) {
    std::wstring filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t number = text[at] == L'%' && at + 1 < text.size()
                                       ? static_cast<std::size_t>(text[at + 1] - L'1')
                                       : values.size();
        if (number < values.size()) {
            filled += values.begin()[number];
            ++at;
        } else {
            filled += text[at];
        }
    }
    return filled;
}
