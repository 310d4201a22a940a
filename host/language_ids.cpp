#include "language_ids.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pdfhost {

int LanguageIdOf(std::string_view tag) {
    static constexpr std::array<std::pair<std::string_view, int>, 16> kIds{{
        {"en-US", 0x0409},
        {"en-GB", 0x0809},
        {"de-DE", 0x0407},
        {"fr-FR", 0x040C},
        {"es-ES", 0x0C0A},
        {"it-IT", 0x0410},
        {"nl-NL", 0x0413},
        {"pt-BR", 0x0416},
        {"pt-PT", 0x0816},
        {"ru-RU", 0x0419},
        {"pl-PL", 0x0415},
        {"ja-JP", 0x0411},
        {"ko-KR", 0x0412},
        {"zh-CN", 0x0804},
        {"zh-TW", 0x0404},
        {"sv-SE", 0x041D},
    }};
    const auto it = std::find_if(kIds.begin(), kIds.end(),
                                 [&](const auto& entry) { return entry.first == tag; });
    return it == kIds.end() ? 0 : it->second;
}

}  // namespace pdfhost
