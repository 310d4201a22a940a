// The command line, with the options of headless batches, and the split of a batch's files
// between array-job parts.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "command_line.h"
#include "shard.h"

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

TEST(BatchCommandLine, ReadsTheBatchOptions) {
    const CommandLine line =
        ParseCommandLine({"--batch", "--out", "/o", "--prefix", "p-", "--suffix", "", "--overwrite",
                          "--terms", "Ana Lind, Nightjar", "--report", "/r.json", "--shard", "2/3",
                          "--plugins", "/q", "/in", "/x.pdf"},
                         "/bin");
    ASSERT_TRUE(line.batch.has_value());
    EXPECT_TRUE(line.options.headless);
    EXPECT_FALSE(line.script);
    EXPECT_EQ(line.batch->out, "/o");
    EXPECT_EQ(line.batch->Prefix(), "p-");
    EXPECT_EQ(line.batch->Suffix(), "");
    EXPECT_TRUE(line.batch->overwrite);
    EXPECT_EQ(line.batch->terms, "Ana Lind, Nightjar");
    EXPECT_EQ(line.batch->report, "/r.json");
    EXPECT_EQ(line.batch->shard, "2/3");
    EXPECT_EQ(line.options.plugins, std::filesystem::path("/q"));
    EXPECT_EQ(line.files, (std::vector<std::string>{"/in", "/x.pdf"}));
}

TEST(BatchCommandLine, NamesGetASuffixUnlessTheUserSaysOtherwise) {
    const struct {
        std::vector<std::string> args;
        const char* prefix;
        const char* suffix;
    } cases[] = {
        {{"--batch", "a.pdf"}, "", "_redacted"},
        {{"--batch", "--prefix", "r_", "a.pdf"}, "r_", ""},
        {{"--batch", "--suffix", "-x", "a.pdf"}, "", "-x"},
        {{"--batch", "--prefix", "r_", "--suffix", "-x", "a.pdf"}, "r_", "-x"},
    };
    for (const auto& c : cases) {
        const CommandLine line = ParseCommandLine(c.args, "/bin");
        EXPECT_EQ(line.batch->Prefix(), c.prefix) << c.args[1];
        EXPECT_EQ(line.batch->Suffix(), c.suffix) << c.args[1];
    }
}

TEST(CommandLine, RefusesUnknownOptionsMissingValuesAndBadBatchUsage) {
    const std::vector<std::vector<std::string>> cases = {
        {"--verbose"},
        {"--headless", "--profile"},
        {"--lang"},
        {"--batch"},
        {"--out", "/o", "a.pdf"},
        {"--overwrite", "a.pdf"},
        {"--batch", "--script", "a.pdf"},
        {"--batch", "--out"},
        {"--batch", "--out", "", "a.pdf"},
        {"--batch", "--prefix", "a/b", "a.pdf"},
        {"--batch", "--suffix", "x:y", "a.pdf"},
        {"--batch", "--shards", "1/2", "a.pdf"},
    };
    for (const auto& args : cases)
        EXPECT_THROW(ParseCommandLine(args, "/bin"), std::invalid_argument) << args.back();
}

// An environment of "NAME=value" words.
Environment Env(const std::string& words) {
    std::map<std::string, std::string> values;
    std::istringstream in(words);
    for (std::string word; in >> word;)
        values[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
    return [values](const std::string& name) -> std::optional<std::string> {
        const auto it = values.find(name);
        return it == values.end() ? std::nullopt : std::optional<std::string>(it->second);
    };
}

TEST(Shard, PartsByNameAndFromTheEnvironment) {
    const struct {
        const char* text;
        const char* env;
        Shard expected;
    } cases[] = {
        {"1/1", "", {0, 1}},
        {"3/4", "", {2, 4}},
        {"auto", "SLURM_ARRAY_TASK_ID=2 SLURM_ARRAY_TASK_COUNT=3", {2, 3}},
        {"auto", "SLURM_ARRAY_TASK_ID=7 SLURM_ARRAY_TASK_COUNT=4 SLURM_ARRAY_TASK_MIN=5", {2, 4}},
        {"auto", "JOB_COMPLETION_INDEX=0 JOB_COMPLETIONS=5", {0, 5}},
        {"auto",
         "SLURM_ARRAY_TASK_ID=1 SLURM_ARRAY_TASK_COUNT=2 JOB_COMPLETION_INDEX=0 JOB_COMPLETIONS=5",
         {1, 2}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ParseShard(c.text, Env(c.env)), c.expected) << c.text << " " << c.env;
}

TEST(Shard, RefusesPartsThatDoNotExist) {
    for (const char* text : {"0/3", "4/3", "1/0", "-1/3", "1/", "/3", "1/3x", " 1/3",
                             "1/99999999999", "two/3", "auto"})
        EXPECT_THROW(ParseShard(text, Env("")), std::invalid_argument) << text;
    for (const char* env :
         {"SLURM_ARRAY_TASK_ID=1", "SLURM_ARRAY_TASK_ID=3 SLURM_ARRAY_TASK_COUNT=3",
          "SLURM_ARRAY_TASK_ID=0 SLURM_ARRAY_TASK_COUNT=3 SLURM_ARRAY_TASK_MIN=1",
          "JOB_COMPLETION_INDEX=x JOB_COMPLETIONS=2", "JOB_COMPLETION_INDEX=0"})
        EXPECT_THROW(ParseShard("auto", Env(env)), std::invalid_argument) << env;
}

TEST(Shard, EachFileBelongsToExactlyOnePart) {
    const std::vector<std::string> files = {"/e.pdf", "/a.pdf", "/d.pdf", "/b.pdf",
                                            "/c.pdf", "/a.pdf", "/f.pdf"};
    const struct {
        Shard shard;
        std::vector<std::string> expected;
    } cases[] = {
        {{0, 1}, {"/a.pdf", "/b.pdf", "/c.pdf", "/d.pdf", "/e.pdf", "/f.pdf"}},
        {{0, 3}, {"/a.pdf", "/d.pdf"}},
        {{1, 3}, {"/b.pdf", "/e.pdf"}},
        {{2, 3}, {"/c.pdf", "/f.pdf"}},
        {{6, 8}, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FilesOfShard(files, c.shard), c.expected) << c.shard.index;
}

}  // namespace
}  // namespace pdfhost
