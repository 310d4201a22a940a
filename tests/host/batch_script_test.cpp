// The batch section of scripted mode against stand-ins of the plug-in's dialogs: the answers to
// the file list, the options, the overwrite list and the result, and the batch page's run that
// reads the script's lines inside its modal loop.
#include <QCoreApplication>
#include <QTimer>
#include <QVariant>
#include <sstream>

#include "automation/script_session.h"
#include "fake_batch_dialogs.h"
#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost {
namespace {

using testing::Compact;

class BatchScript : public testing::HostFixture {
  protected:
    // Runs the lines; the stand-in batch starts at the first "wait" line.
    std::vector<Json::Value> RunBatch(const std::vector<std::string>& lines,
                                      QStringList existing = {}) {
        QTimer::singleShot(0, [this, existing] {
            testing::FakeFileListDialog list(existing, [this](const QString& text) {
                app_.ShowMessage(text.toStdString(), "Batch Redaction");
            });
            if (list.exec() != QDialog::Accepted)
                return;
            accepted_ = list.Accepted();
            testing::FakeBatchPage page(
                qApp->property(AutomationChannel::kBatchPropertyName).value<QObject*>());
            pageResult_ = page.Run();
        });
        std::string text;
        for (const std::string& line : lines)
            text += line + "\n";
        std::istringstream in(text);
        session_.Run(in);
        return testing::ParseScriptLines(out_.str());
    }

    // Each line compact, for comparing whole runs.
    static std::vector<std::string> Texts(const std::vector<Json::Value>& lines) {
        std::vector<std::string> texts;
        for (const Json::Value& line : lines)
            texts.push_back(Compact(line));
        return texts;
    }

    std::ostringstream out_;
    ScriptSession session_{app_, out_};
    QStringList accepted_;
    int pageResult_ = -1;
};

constexpr const char* kWait = R"({"host":"wait","ms":0})";

TEST_F(BatchScript, AWholeBatchPrintsEachDialogAndServesThePageUntilItEnds) {
    const auto lines = RunBatch(
        {R"({"host":"answer","dialog":"fileList","value":["/in/a.pdf","/in/broken.pdf"]})",
         R"({"host":"answer","dialog":"options","value":{"specificFolder":true,"folder":"/out/",)"
         R"("prefix":"x:y?z","suffix":"","overwrite":true}})",
         kWait, R"({"post":"hello"})", R"({"host":"state"})", R"({"post":"hide"})",
         R"({"host":"state"})", R"({"host":"open","path":"/in/a.pdf"})",
         R"({"host":"ribbon","item":"BatchRedact"})",
         R"({"host":"answer","dialog":"result","value":1})", R"({"post":"end"})",
         R"({"post":"after the batch"})", R"({"host":"state"})"});
    const std::vector<std::string> expected = {
        R"({"answer":["/in/a.pdf","/in/broken.pdf"],"dialog":"fileList","rows":[)"
        R"({"error":"","folder":"/in","name":"a.pdf","pages":5},)"
        R"({"error":"The file cannot be read.","errorKey":"IDS_STR_PARSEERROR","folder":"/in",)"
        R"("name":"broken.pdf"}],"title":"Batch Redaction Files","totalPages":5})",
        R"({"answer":{"folder":"/out/","overwrite":true,"prefix":"x:y?z","specificFolder":true,)"
        R"("suffix":""},"dialog":"options","record":{"addToName":true,"folder":"/out//",)"
        R"("keepName":false,"overwrite":true,"prefix":"xyz","sameFolder":false,)"
        R"("specificFolder":true,"suffix":""},"title":"Output Options"})",
        R"({"dialog":"batchPage","title":"Batch Redaction",)"
        R"("url":"https://page.test/batch?batchRedaction=true"})",
        R"({"reply":"page:hello"})",
        R"({"state":{"batchPage":{"visible":true},"documents":[],"hidden":[],)"
        R"("paneShown":false,"tool":"Select"}})",
        R"({"reply":"page:hide"})",
        R"({"state":{"batchPage":{"visible":false},"documents":[],"hidden":[],)"
        R"("paneShown":false,"tool":"Select"}})",
        R"({"error":"the batch dialog blocks the main window: open"})",
        R"({"error":"the batch dialog blocks the main window: ribbon"})",
        R"({"answer":1,"dialog":"result","failedFileList":["/in/broken.pdf"],"heightChange":0,)"
        R"("listShown":true,"message":"1 file failed","picture":"failure","ret":1,)"
        R"("title":"Batch Redaction"})",
        R"({"reply":"ended"})",
        R"({"closed":1,"dialog":"batchPage"})",
        R"({"state":{"batchPage":null,"documents":[],"hidden":[],"paneShown":false,"tool":"Select"}})",
    };
    EXPECT_EQ(Texts(lines), expected);
    EXPECT_EQ(accepted_, QStringList{"/in/a.pdf"});
    EXPECT_EQ(pageResult_, 1);
}

TEST_F(BatchScript, FileListsThatEndTheBatchBeforeThePage) {
    const struct {
        const char* what;
        std::vector<std::string> lines;
        QStringList existing;
        std::vector<std::string> expected;
    } cases[] = {
        {"cancelled",
         {R"({"host":"answer","dialog":"fileList","value":null})", kWait},
         {},
         {R"({"answer":null,"dialog":"fileList","rows":[],"title":"Batch Redaction Files",)"
          R"("totalPages":0})"}},
        {"not answered",
         {kWait},
         {},
         {R"({"answer":null,"dialog":"fileList","rows":[],"title":"Batch Redaction Files",)"
          R"("totalPages":0})",
          R"({"unanswered":"fileList"})"}},
        {"not a list of paths",
         {R"({"host":"answer","dialog":"fileList","value":["/in/a.pdf",3]})", kWait},
         {},
         {R"({"answer":["/in/a.pdf",3],"dialog":"fileList","rows":[],)"
          R"("title":"Batch Redaction Files","totalPages":0})"}},
        {"overwriting refused",
         {R"({"host":"answer","dialog":"fileList","value":["/in/ab.pdf"]})",
          R"({"host":"answer","dialog":"overwrite","value":false})", kWait},
         {"/in/ab_r.pdf"},
         {R"({"answer":["/in/ab.pdf"],"dialog":"fileList","rows":[{"error":"","folder":"/in",)"
          R"("name":"ab.pdf","pages":6}],"title":"Batch Redaction Files","totalPages":6})",
          R"({"answer":false,"dialog":"overwrite","files":["/in/ab_r.pdf"],)"
          R"("title":"Files exist"})"}},
        {"overwriting not answered",
         {R"({"host":"answer","dialog":"fileList","value":["/in/ab.pdf"]})", kWait},
         {"/in/ab_r.pdf"},
         {R"({"answer":["/in/ab.pdf"],"dialog":"fileList","rows":[{"error":"","folder":"/in",)"
          R"("name":"ab.pdf","pages":6}],"title":"Batch Redaction Files","totalPages":6})",
          R"({"answer":null,"dialog":"overwrite","files":["/in/ab_r.pdf"],)"
          R"("title":"Files exist"})",
          R"({"unanswered":"overwrite"})"}},
        {"options that fail their check",
         {R"({"host":"answer","dialog":"fileList","value":["/in/ab.pdf"]})",
          R"({"host":"answer","dialog":"options","value":{"specificFolder":true}})",
          R"({"host":"answer","dialog":"overwrite","value":false})", kWait},
         {"/in/ab_r.pdf"},
         {R"({"answer":["/in/ab.pdf"],"dialog":"fileList","rows":[{"error":"","folder":"/in",)"
          R"("name":"ab.pdf","pages":6}],"title":"Batch Redaction Files","totalPages":6})",
          R"({"dialog":"message","text":"choose a folder","title":"Batch Redaction"})",
          R"({"answer":{"specificFolder":true},"dialog":"options","record":null,)"
          R"("title":"Output Options"})",
          R"({"answer":false,"dialog":"overwrite","files":["/in/ab_r.pdf"],)"
          R"("title":"Files exist"})"}},
        {"options then a page closed by the end of input",
         {R"({"host":"answer","dialog":"fileList","value":["/in/ab.pdf"]})",
          R"({"host":"answer","dialog":"options","value":{"keepName":true,"overwrite":true}})",
          kWait},
         {},
         {R"({"answer":["/in/ab.pdf"],"dialog":"fileList","rows":[{"error":"","folder":"/in",)"
          R"("name":"ab.pdf","pages":6}],"title":"Batch Redaction Files","totalPages":6})",
          R"({"answer":{"keepName":true,"overwrite":true},"dialog":"options","record":)"
          R"({"addToName":false,"folder":"","keepName":true,"overwrite":true,"prefix":"",)"
          R"("sameFolder":true,"specificFolder":false,"suffix":""},"title":"Output Options"})",
          R"({"dialog":"batchPage","title":"Batch Redaction",)"
          R"("url":"https://page.test/batch?batchRedaction=true"})",
          R"({"closed":2,"dialog":"batchPage"})"}},
    };
    for (const auto& c : cases) {
        out_.str("");
        pageResult_ = -1;
        EXPECT_EQ(Texts(RunBatch(c.lines, c.existing)), c.expected) << c.what;
        EXPECT_EQ(pageResult_, c.expected.back().find("closed") != std::string::npos ? 2 : -1)
            << c.what;
    }
}

TEST_F(BatchScript, QuitAndTheEndOfInputCloseThePageFirst) {
    const struct {
        const char* what;
        std::vector<std::string> lines;
    } cases[] = {
        {"quit", {kWait, R"({"post":"one"})", R"({"host":"quit"})", R"({"post":"never read"})"}},
        {"end of input", {kWait, R"({"post":"one"})"}},
        {"close request", {kWait, R"({"post":"one"})", R"({"post":"close"})"}},
    };
    for (const auto& c : cases) {
        out_.str("");
        std::vector<std::string> lines = {
            R"({"host":"answer","dialog":"fileList","value":["/in/a.pdf"]})"};
        lines.insert(lines.end(), c.lines.begin(), c.lines.end());
        const std::vector<std::string> texts = Texts(RunBatch(lines));
        ASSERT_GE(texts.size(), 3u) << c.what;
        EXPECT_EQ(texts[2], R"({"reply":"page:one"})") << c.what;
        EXPECT_EQ(texts.back(), R"({"closed":2,"dialog":"batchPage"})") << c.what;
        EXPECT_EQ(texts.size(), c.lines.back().find("close\"") != std::string::npos ? 5u : 4u)
            << c.what;
        EXPECT_EQ(pageResult_, 2) << c.what;
    }
}

}  // namespace
}  // namespace pdfhost
