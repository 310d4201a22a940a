#include "engine/removed_text_matcher.h"

#include <algorithm>
#include <unordered_set>

#include "engine/pdf_text_string.h"
#include "engine/text_page.h"

namespace pdfhost::engine {
namespace {

std::u32string Normalised(std::u32string_view text) {
    std::u32string out;
    bool pendingSpace = false;
    for (const char32_t code : text) {
        if (IsSpaceChar(code)) {
            pendingSpace = !out.empty();
            continue;
        }
        if (pendingSpace)
            out.push_back(U' ');
        pendingSpace = false;
        out.push_back(FoldCase(code));
    }
    return out;
}

std::u32string Utf16Of(std::string_view bytes, std::size_t start, bool bigEndian) {
    std::u32string out;
    out.reserve(bytes.size() / 2);
    for (std::size_t i = start; i + 1 < bytes.size(); i += 2) {
        const auto hi = static_cast<unsigned char>(bytes[bigEndian ? i : i + 1]);
        const auto lo = static_cast<unsigned char>(bytes[bigEndian ? i + 1 : i]);
        out.push_back(static_cast<char32_t>(hi << 8 | lo));
    }
    return out;
}

}  // namespace

RemovedTextMatcher::RemovedTextMatcher(const std::vector<std::u32string>& texts) {
    std::unordered_set<std::u32string> seen;
    for (const std::u32string& text : texts) {
        std::u32string needle = Normalised(text);
        if (!needle.empty() && seen.insert(needle).second)
            needles_.push_back(std::move(needle));
    }
    std::stable_sort(needles_.begin(), needles_.end(),
                     [](const auto& a, const auto& b) { return a.size() > b.size(); });
    for (std::size_t i = 0; i < needles_.size(); ++i)
        byFirst_[needles_[i].front()].push_back(i);
}

std::size_t RemovedTextMatcher::MatchAt(std::u32string_view text, std::size_t at,
                                        const std::u32string& needle) const {
    std::size_t pos = at;
    for (const char32_t want : needle) {
        if (pos >= text.size())
            return 0;
        if (want == U' ') {
            if (!IsSpaceChar(text[pos]))
                return 0;
            while (pos < text.size() && IsSpaceChar(text[pos]))
                ++pos;
            continue;
        }
        if (FoldCase(text[pos]) != want)
            return 0;
        ++pos;
    }
    return pos - at;
}

std::vector<TextSpan> RemovedTextMatcher::Find(std::u32string_view text) const {
    std::vector<TextSpan> found;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t length = 0;
        const auto candidates = byFirst_.find(FoldCase(text[at]));
        if (candidates != byFirst_.end()) {
            for (const std::size_t index : candidates->second) {
                length = MatchAt(text, at, needles_[index]);
                if (length > 0)
                    break;
            }
        }
        if (length == 0) {
            ++at;
            continue;
        }
        found.push_back(TextSpan{at, length});
        at += length;
    }
    return found;
}

std::u32string RemovedTextMatcher::Erase(std::u32string_view text) const {
    std::u32string out;
    std::size_t at = 0;
    for (const TextSpan& span : Find(text)) {
        out.append(text.substr(at, span.first - at));
        at = span.first + span.count;
    }
    out.append(text.substr(std::min(at, text.size())));
    return out;
}

bool RemovedTextMatcher::OccursInBytes(std::string_view bytes) const {
    if (needles_.empty())
        return false;
    return !Find(DecodeUtf8(bytes)).empty() || !Find(DecodePdfDocBytes(bytes)).empty() ||
           !Find(Utf16Of(bytes, 0, true)).empty() || !Find(Utf16Of(bytes, 1, true)).empty() ||
           !Find(Utf16Of(bytes, 0, false)).empty() || !Find(Utf16Of(bytes, 1, false)).empty();
}

}  // namespace pdfhost::engine
