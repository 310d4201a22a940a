// The system's name and language as usage reports carry them.
#include <gtest/gtest.h>

#include <map>

#include "account/system_language.h"
#include "account/system_name.h"

namespace {

// A reader over a map: what it holds, nothing for the rest.
template <typename Key>
auto ReaderOf(const std::map<std::string, std::string>& values) {
    return [&values](Key key) -> std::optional<std::string> {
        const auto found = values.find(key);
        return found != values.end() ? std::optional(found->second) : std::nullopt;
    };
}

TEST(SystemName, PrefersThePrettyNameThenNameAndVersionThenTheSecondFile) {
    EXPECT_EQ(SystemNameFromOsRelease("NAME=\"Debian GNU/Linux\"\nVERSION_ID=\"12\"\n"
                                      "PRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n"),
              "Debian GNU/Linux 12 (bookworm)");
    EXPECT_EQ(SystemNameFromOsRelease("NAME=Fedora\r\nVERSION_ID=40\r\nPRETTY_NAME=\n"),
              "Fedora 40");
    EXPECT_EQ(SystemNameFromOsRelease("# c\n  NAME='Arch \"Linux\"'\n"), "Arch \"Linux\"");
    EXPECT_EQ(SystemNameFromOsRelease("PRETTY_NAME=\"a \\\"b\\\" \\\\\"\n"), "a \"b\" \\");
    EXPECT_EQ(SystemNameFromOsRelease("VERSION_ID=1\nbroken\n=x\n"), "");

    std::map<std::string, std::string> files{{"/usr/lib/os-release", "NAME=Other\n"}};
    EXPECT_EQ(SystemName(ReaderOf<const std::string&>(files)), "Other");
    files["/etc/os-release"] = "PRETTY_NAME=First\n";
    EXPECT_EQ(SystemName(ReaderOf<const std::string&>(files)), "First");
    files.clear();
    EXPECT_EQ(SystemName(ReaderOf<const std::string&>(files)), "");
}

TEST(SystemLanguage, MapsTheFirstLocaleSetThroughTheServiceTable) {
    std::map<std::string, std::string> variables{{"LANG", "fr_FR.UTF-8"}, {"LC_ALL", ""}};
    const EnvironmentReader environment = ReaderOf<const char*>(variables);
    EXPECT_EQ(SystemLanguage(environment), "fr_Fr");
    variables["LC_MESSAGES"] = "es-es@euro";
    EXPECT_EQ(SystemLanguage(environment), "es_Es");
    const std::pair<const char*, const char*> cases[] = {
        {"th_TH", "en_TH"}, {"id_ID", "en_ID"},       {"vi_VN", "vi_VI"},
        {"en_GB", "en_US"}, {"de_AT.UTF-8", "en_US"}, {"C.UTF-8", "en_US"}};
    for (const auto& [locale, reported] : cases) {
        variables["LC_ALL"] = locale;
        EXPECT_EQ(SystemLanguage(environment), reported) << locale;
    }
    variables.clear();
    EXPECT_EQ(SystemLanguage(environment), "en_US");
}

}  // namespace
