// The files of a headless batch, their outputs, the findings counted by kind and the report.

#include <fstream>
#include <sstream>

#include "batch_files.h"
#include "batch_report.h"
#include "batch_watch.h"
#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

namespace fs = std::filesystem;

TEST(BatchFiles, FoldersGiveTheirFilesButNotTheirSubFolders) {
    TempFolder folder;
    fs::create_directories(folder / "in" / "deeper");
    for (const char* name : {"in/b.pdf", "in/a.txt", "in/deeper/c.pdf", "single.pdf"})
        std::ofstream(folder / name) << "x";
    const std::string in = (folder / "in").string();
    const std::string single = (folder / "single.pdf").string();
    const BatchInputs inputs =
        CollectBatchInputs({single, in, in + "/b.pdf", (folder / "gone.pdf").string()});
    EXPECT_EQ(inputs.files, (std::vector<std::string>{in + "/a.txt", in + "/b.pdf", single}));
    EXPECT_EQ(inputs.missing, std::vector<std::string>{(folder / "gone.pdf").string()});
}

TEST(BatchFiles, TargetsByTheNamingRule) {
    const struct {
        const char* source;
        const char* folder;
        const char* prefix;
        const char* suffix;
        const char* target;
    } cases[] = {
        {"/in/a.pdf", "", "", "_redacted", "/in/a_redacted.pdf"},
        {"/in/a.pdf", "/out", "r_", "", "/out/r_a.pdf"},
        {"/in/a.pdf", "/out/", "", "", "/out/a.pdf"},
        {"/in/a.pdf", "", "", "", "/in/a.pdf"},
        {"/in/noext", "/out", "a", "b", "/out/anoextb.pdf"},
        {"/in/x.y.PDF", "", "", "-1", "/in/x.y-1.PDF"},
        {"/in/dir.d/name", "", "", "_r", "/in/dir.d/name_r.pdf"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(BatchTarget(c.source, c.folder, c.prefix, c.suffix), c.target) << c.source;
}

TEST(BatchFindings, CountedByTheKindInTheName) {
    const std::map<std::string, int> findings = FindingsByKind({
        "ai_plugin_redact_email_1",
        "ai_plugin_redact_email_2_x",
        "ai_plugin_redact_iban2_9",
        "ai_plugin_redact_phone_",
        "ai_plugin_redact_bad-kind_1",
        "ai_plugin_redact__1",
        "ai_plugin_redact_nounderscore",
        "user drawn",
        "",
    });
    EXPECT_EQ(findings, (std::map<std::string, int>{{"email", 2}, {"iban2", 1}, {"phone", 1}}));
}

TEST(BatchReport, LinesAndJsonSayTheSame) {
    const std::vector<BatchFileReport> files = {
        {.path = "/in/a.pdf",
         .pages = 2,
         .findings = {{"email", 2}, {"phone", 1}},
         .output = "/out/a_redacted.pdf"},
        {.path = "/in/b.pdf", .pages = 1, .output = "/out/b_redacted.pdf"},
        {.path = "/in/c.pdf", .reason = "The file cannot be read. (IDS_STR_PARSEERROR)"},
    };
    std::ostringstream out;
    PrintBatchReport(out, files);
    EXPECT_EQ(out.str(),
              "/in/a.pdf: redacted, 2 pages, findings email 2, phone 1, total 3 -> "
              "/out/a_redacted.pdf\n"
              "/in/b.pdf: redacted, 1 page, findings total 0 -> /out/b_redacted.pdf\n"
              "/in/c.pdf: failed: The file cannot be read. (IDS_STR_PARSEERROR)\n"
              "3 files: 2 redacted, 1 failed\n");
    EXPECT_EQ(Compact(BatchReportJson(files)),
              R"j({"files":[{"findings":{"email":2,"phone":1},"name":"a.pdf",)j"
              R"j("output":"/out/a_redacted.pdf","pages":2,"path":"/in/a.pdf","reason":null,)j"
              R"j("status":"redacted","total":3},{"findings":{},"name":"b.pdf",)j"
              R"j("output":"/out/b_redacted.pdf","pages":1,"path":"/in/b.pdf","reason":null,)j"
              R"j("status":"redacted","total":0},{"findings":{},"name":"c.pdf","output":null,)j"
              R"j("pages":null,"path":"/in/c.pdf",)j"
              R"j("reason":"The file cannot be read. (IDS_STR_PARSEERROR)","status":"failed",)j"
              R"j("total":0}],"summary":{"failed":1,"files":3,"redacted":2}})j");
}

}  // namespace
}  // namespace pdfhost::testing
