#include <gtest/gtest.h>

#include "command_line.h"

namespace pdfhost {
namespace {

TEST(CommandLine, DefaultsToADesktopRunWithPlugInsBesideTheExecutable) {
    const CommandLine line = ParseCommandLine({"a.pdf", "b.pdf"}, "/opt/build/out/bin");
    EXPECT_FALSE(line.options.headless);
    EXPECT_FALSE(line.script);
    EXPECT_EQ(line.options.plugins, std::filesystem::path("/opt/build/out/plugins"));
    EXPECT_TRUE(line.options.profile.empty());
    EXPECT_EQ(line.options.language, "en-US");
    EXPECT_FALSE(line.options.signedIn.has_value());
    EXPECT_EQ(line.files, (std::vector<std::string>{"a.pdf", "b.pdf"}));
}

TEST(CommandLine, ReadsEveryOption) {
    const CommandLine line = ParseCommandLine(
        {"--script", "--profile", "/p", "--plugins", "/q", "--lang", "de-DE", "--signed-out",
         "--account-server", "http://s", "--browser-pane", "x.pdf"},
        "/bin");
    EXPECT_TRUE(line.script);
    EXPECT_TRUE(line.options.headless);
    EXPECT_EQ(line.options.profile, std::filesystem::path("/p"));
    EXPECT_EQ(line.options.plugins, std::filesystem::path("/q"));
    EXPECT_EQ(line.options.language, "de-DE");
    EXPECT_EQ(line.options.signedIn, false);
    EXPECT_EQ(line.options.accountServer, "http://s");
    EXPECT_TRUE(line.browserPane);
    EXPECT_EQ(line.files, std::vector<std::string>{"x.pdf"});
}

TEST(CommandLine, RejectsUnknownOptionsAndMissingValues) {
    EXPECT_THROW(ParseCommandLine({"--verbose"}, "/bin"), std::invalid_argument);
    EXPECT_THROW(ParseCommandLine({"--headless", "--profile"}, "/bin"), std::invalid_argument);
    EXPECT_THROW(ParseCommandLine({"--lang"}, "/bin"), std::invalid_argument);
}

}  // namespace
}  // namespace pdfhost
