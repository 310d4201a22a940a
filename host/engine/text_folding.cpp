#include "engine/text_folding.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <array>
#include <unordered_map>

namespace pdfhost::engine {
namespace {

bool IsScalar(char32_t code) {
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

// The normaliser instances are owned by ICU and live as long as the process.
const icu::Normalizer2* Instance(const icu::Normalizer2* (*get)(UErrorCode&)) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* instance = get(status);
    return U_SUCCESS(status) ? instance : nullptr;
}

const icu::Normalizer2* CaseFoldInstance() {
    static const icu::Normalizer2* instance = Instance(&icu::Normalizer2::getNFKCCasefoldInstance);
    return instance;
}

const icu::Normalizer2* DecomposeInstance() {
    static const icu::Normalizer2* instance = Instance(&icu::Normalizer2::getNFDInstance);
    return instance;
}

const icu::Normalizer2* CompatDecomposeInstance() {
    static const icu::Normalizer2* instance = Instance(&icu::Normalizer2::getNFKDInstance);
    return instance;
}

const icu::Normalizer2* CompatComposeInstance() {
    static const icu::Normalizer2* instance = Instance(&icu::Normalizer2::getNFKCInstance);
    return instance;
}

icu::UnicodeString Normalize(const icu::Normalizer2* normalizer, const icu::UnicodeString& text) {
    if (normalizer == nullptr)
        return text;
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result = normalizer->normalize(text, status);
    return U_SUCCESS(status) ? result : text;
}

void AppendCodePoints(const icu::UnicodeString& text, std::u32string& out) {
    for (int32_t at = 0; at < text.length();) {
        const UChar32 code = text.char32At(at);
        out += static_cast<char32_t>(code);
        at += U16_LENGTH(code);
    }
}

std::u32string FoldedByIcu(UChar32 point, Folding folding) {
    std::u32string out;
    if (u_hasBinaryProperty(point, UCHAR_DEFAULT_IGNORABLE_CODE_POINT))
        return out;
    const icu::UnicodeString text(point);
    switch (folding) {
        case Folding::kCaseless:
            AppendCodePoints(Normalize(DecomposeInstance(), Normalize(CaseFoldInstance(), text)),
                             out);
            break;
        case Folding::kCaseKept:
            AppendCodePoints(Normalize(CompatDecomposeInstance(), text), out);
            break;
        case Folding::kReading:
            AppendCodePoints(Normalize(CompatComposeInstance(), text), out);
            break;
    }
    return out;
}

// Pages repeat the few code points of their scripts: each folding is asked of ICU once per
// thread, up to a bound that no page reaches by chance.
constexpr std::size_t kMaxRemembered = 1 << 16;

}  // namespace

void AppendFolded(char32_t code, Folding folding, std::u32string& out) {
    if (code < 0x80) {
        const bool upper = code >= U'A' && code <= U'Z';
        out += folding == Folding::kCaseless && upper ? code + (U'a' - U'A') : code;
        return;
    }
    if (!IsScalar(code)) {
        out += code;
        return;
    }
    thread_local std::array<std::unordered_map<char32_t, std::u32string>, 3> remembered;
    auto& known = remembered[static_cast<std::size_t>(folding)];
    if (const auto found = known.find(code); found != known.end()) {
        out += found->second;
        return;
    }
    std::u32string folded = FoldedByIcu(static_cast<UChar32>(code), folding);
    out += folded;
    if (known.size() < kMaxRemembered)
        known.emplace(code, std::move(folded));
}

std::u32string Folded(std::u32string_view text, Folding folding) {
    std::u32string out;
    out.reserve(text.size());
    for (const char32_t code : text)
        AppendFolded(code, folding, out);
    return out;
}

bool IsLetterChar(char32_t code) {
    if (code < 0x80)
        return (code >= U'a' && code <= U'z') || (code >= U'A' && code <= U'Z');
    return IsScalar(code) && u_isalpha(static_cast<UChar32>(code));
}

bool IsRightToLeftChar(char32_t code) {
    if (code < 0x590 || !IsScalar(code))  // no right-to-left script comes before Hebrew
        return false;
    const UCharDirection direction = u_charDirection(static_cast<UChar32>(code));
    return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC;
}

}  // namespace pdfhost::engine
