// The language of the user's interface, as usage reports carry it: the system's language id
// looked up in the service's table of fifteen rows, "en_US" for any language the table lacks.
// On Linux the id comes from the locale of the environment (LC_ALL, LC_MESSAGES, LANG), read
// through a reader the platform layer gives; other systems look their own id up in the table.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// The value of an environment variable, or nothing when it is not set.
using EnvironmentReader = std::function<std::optional<std::string>(const char* name)>;

// The language id of a locale name such as "de_DE.UTF-8" or "pt_BR@latin"; nothing for a locale
// that the table lacks ("C", "POSIX", "de_AT", ...).
std::optional<uint16_t> LanguageIdOfLocale(std::string_view locale);

// The service's text for a language id.
std::string ReportedLanguage(std::optional<uint16_t> languageId);

// The reported language of the first of LC_ALL, LC_MESSAGES and LANG that is set and not empty.
std::string SystemLanguage(const EnvironmentReader& environment);
