// The system facts on Linux: the name from the os-release file, the language from the locale of
// the environment.
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

#include "account/system_language.h"
#include "account/system_name.h"
#include "account/usage_report.h"

namespace {

std::optional<std::string> ReadEnvironment(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr)
        return std::nullopt;
    return std::string(value);
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

SystemFacts SystemFacts::OfThisSystem() {
    return SystemFacts{SystemName(&ReadWholeFile), SystemLanguage(&ReadEnvironment)};
}
