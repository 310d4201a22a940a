#include "system_language.h"

#include <algorithm>
#include <cctype>

namespace {

struct LanguageRow {
    uint16_t id;
    const char* locale;    // the locale name that stands for the id on this platform
    const char* reported;  // the service's text; its spelling is the service's
};

constexpr LanguageRow kLanguages[] = {
    {0x804, "zh_CN", "zh_CN"}, {0x409, "en_US", "en_US"}, {0x412, "ko_KR", "ko_KR"},
    {0x411, "ja_JP", "ja_JP"}, {0x421, "id_ID", "en_ID"}, {0x407, "de_DE", "de_DE"},
    {0x40C, "fr_FR", "fr_Fr"}, {0x410, "it_IT", "it_IT"}, {0x416, "pt_BR", "pt_BR"},
    {0xC0A, "es_ES", "es_Es"}, {0x419, "ru_RU", "ru_RU"}, {0x41F, "tr_TR", "tr_TR"},
    {0x42A, "vi_VN", "vi_VI"}, {0x41E, "th_TH", "en_TH"}, {0x809, "en_GB", "en_US"},
};

constexpr const char* kDefaultLanguage = "en_US";
constexpr const char* kLocaleVariables[] = {"LC_ALL", "LC_MESSAGES", "LANG"};

bool SameLocale(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        const auto lower = [](char c) {
            return c == '-' ? '_' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        };
        return lower(x) == lower(y);
    });
}

}  // namespace

std::optional<uint16_t> LanguageIdOfLocale(std::string_view locale) {
    // language[_territory][.codeset][@modifier]
    locale = locale.substr(0, locale.find_first_of(".@"));
    const auto row =
        std::find_if(std::begin(kLanguages), std::end(kLanguages),
                     [&](const LanguageRow& r) { return SameLocale(locale, r.locale); });
    if (row == std::end(kLanguages))
        return std::nullopt;
    return row->id;
}

std::string ReportedLanguage(std::optional<uint16_t> languageId) {
    if (!languageId)
        return kDefaultLanguage;
    const auto row = std::find_if(std::begin(kLanguages), std::end(kLanguages),
                                  [&](const LanguageRow& r) { return r.id == *languageId; });
    return row != std::end(kLanguages) ? row->reported : kDefaultLanguage;
}

std::string SystemLanguage(const EnvironmentReader& environment) {
    for (const char* name : kLocaleVariables) {
        const std::optional<std::string> value = environment(name);
        if (value && !value->empty())
            return ReportedLanguage(LanguageIdOfLocale(*value));
    }
    return kDefaultLanguage;
}
