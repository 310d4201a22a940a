// A batch run through the plug-in: the file check, the session's states and the page's three
// batch commands with their replies, against a fake host and platform.
#include <gtest/gtest.h>
#include <json/value.h>

#include "batch/batch_redaction.h"
#include "batch/file_check.h"
#include "bridge/json_text.h"
#include "bridge/web_message_channel.h"
#include "fake_batch_host.h"
#include "plugin_fixture.h"

namespace {

FakeDoc PagesDoc(std::wstring path, int pages) {
    FakeDoc doc = FileDoc(std::move(path));
    doc.pages.resize(static_cast<std::size_t>(pages));
    return doc;
}

class BatchSessionTest : public PluginFixtureOf<FakeBatchHost> {
  protected:
    BatchSessionTest() {
        host.files.emplace(L"/in/a.pdf", PagesDoc(L"/in/a.pdf", 2));
        host.files.emplace(L"/in/b.pdf", PagesDoc(L"/in/b.pdf", 3));
    }

    Json::Value Call(const std::string& command, const std::string& params = "") {
        return PluginFixtureOf::Call(command, params, "u1");
    }
    int Ret(const std::string& command, const std::string& params = "") {
        return Call(command, params)["ret"].asInt();
    }

    // Queues a file list that ends with OK on `paths`.
    void Choose(const std::vector<std::wstring>& paths, OutputOptions options = {}) {
        BatchChoice choice;
        for (const std::wstring& path : paths) {
            choice.files.push_back({path, 0, 2});
            choice.totalPages += 2;
        }
        choice.options = std::move(options);
        platform.batchChoices.emplace_back(std::move(choice));
    }
};

TEST_F(BatchSessionTest, FileCheckRefusesInOrderAndClosesWhatItOpened) {
    FakeDoc xfa = PagesDoc(L"/in/xfa.pdf", 1);
    xfa.xfa = true;
    xfa.permissions &= ~kHostPermModify;  // the XFA check comes first
    host.files.emplace(xfa.path, xfa);
    FakeDoc noCopy = PagesDoc(L"/in/nocopy.pdf", 1);
    noCopy.permissions &= ~kHostPermCopy;
    host.files.emplace(noCopy.path, noCopy);
    host.files.emplace(L"/in/locked.pdf", PagesDoc(L"/in/locked.pdf", 1));
    host.securityRefuses.insert(L"/in/locked.pdf");
    const struct {
        std::wstring path;
        std::string_view key;
        int pages;
    } rows[] = {
        {L"/in/missing.pdf", kParseErrorKey, 0},
        {L"/in/xfa.pdf", kXfaErrorKey, 0},
        {L"/in/nocopy.pdf", kPermissionErrorKey, 0},
        {L"/in/locked.pdf", kPermissionErrorKey, 0},
        {L"/in/b.pdf", "", 3},
    };
    for (const auto& row : rows) {
        const FileCheck check = CheckBatchFile(host, row.path);
        EXPECT_EQ(check.errorKey, row.key);
        EXPECT_EQ(check.pageCount, row.pages);
    }
    EXPECT_EQ(host.liveHidden, 0);
    EXPECT_EQ(host.liveHandlers, 0);

    // An open document is checked as it stands and stays open; the security handler is not asked.
    FakeDoc open = PagesDoc(L"/in/open.pdf", 4);
    host.securityRefuses.insert(open.path);
    HostDoc doc = host.Open(open);
    EXPECT_EQ(CheckBatchFile(host, L"/in/open.pdf").pageCount, 4);
    EXPECT_EQ(host.HostAppGetDocByIndex(0), doc);
    EXPECT_EQ(host.hiddenOpens.size(), 4u);
    EXPECT_EQ(host.closes.size(), 4u);
}

TEST_F(BatchSessionTest, ARunServesTheQueueAndSavesEachFileByTheRule) {
    HostDoc open = host.Open(PagesDoc(L"/in/b.pdf", 3));
    OutputOptions options;  // beside the source, with "_redacted"
    Choose({L"/in/a.pdf", L"/in/b.pdf", L"/in/a.pdf", L"/in/gone.pdf"}, options);
    std::vector<int> opened;
    std::vector<BatchRedaction::State> states;
    platform.duringBatchPage = [&] {
        states.push_back(app.batch->state());
        EXPECT_TRUE(app.batchMode);
        // Before the start: 1, even with files queued.
        opened.push_back(Ret("openNextFileForBatch"));
        const Json::Value started = Call("startBatchRedaction");
        EXPECT_EQ(started["ret"].asInt(), 0);
        EXPECT_EQ(started["data"]["count"].asInt(), 4);
        EXPECT_EQ(started["data"]["pageCount"].asInt(), 8);
        states.push_back(app.batch->state());
        for (int i = 0; i < 6; ++i) {
            opened.push_back(Ret("openNextFileForBatch"));
            if (opened.back() == 0) {
                EXPECT_EQ(Ret("saveDocument", "{}"), 0);
                EXPECT_EQ(Ret("closeCurrentFile"), 0);
            }
        }
        EXPECT_EQ(Ret("endBatchRedaction", R"({"ret": 0, "message": "done"})"), 0);
    };
    platform.batchResultAnswers.push_back(1);
    app.batch->Run();

    EXPECT_EQ(opened, (std::vector<int>{1, 0, 0, 0, 1, -1, -1}));
    EXPECT_EQ(states, (std::vector<BatchRedaction::State>{BatchRedaction::State::WaitingForPage,
                                                          BatchRedaction::State::Running}));
    // The file that was open is used as it stands: not opened hidden, not closed.
    EXPECT_EQ(host.hiddenOpens, (std::vector<std::wstring>{L"/in/a.pdf", L"/in/a.pdf"}));
    EXPECT_EQ(host.closes, (std::vector<std::wstring>{L"/in/a.pdf", L"/in/a.pdf"}));
    EXPECT_EQ(host.HostAppGetDocByIndex(0), open);
    EXPECT_EQ(host.savedAs.size(), 3u);
    EXPECT_EQ(host.savedAs[1],
              (std::pair<std::wstring, std::wstring>{L"/in/b.pdf", L"/in/b_redacted.pdf"}));
    EXPECT_EQ(host.liveReaders, 0);
    ASSERT_EQ(platform.batchResults.size(), 1u);
    EXPECT_EQ(platform.batchResults[0].message, L"done");
    EXPECT_EQ(platform.pageDialogLog.back(), "batch EndModal 1");
    EXPECT_EQ(app.batch->state(), BatchRedaction::State::Idle);
    EXPECT_FALSE(app.batchMode);
    EXPECT_TRUE(app.batch->batchStarted());
}

TEST_F(BatchSessionTest, EndCodesDecideTheResultDialogAndThePage) {
    Choose({L"/in/a.pdf"});
    std::vector<int> replies;
    platform.duringBatchPage = [&] {
        Call("startBatchRedaction");
        for (const char* params : {R"({"ret": 5})", R"({"ret": -1})", R"({"ret": 200002})",
                                   R"({"ret": "0"})", R"({"ret": 0.5})", "{}", "not json"}) {
            replies.push_back(Ret("endBatchRedaction", params));
        }
        EXPECT_TRUE(platform.batchResults.empty());
        EXPECT_EQ(app.batch->dialog() != nullptr, true);
        // 200001: after the result's OK the hidden page comes back and the run goes on.
        platform.batchResultAnswers.push_back(1);
        replies.push_back(
            Ret("endBatchRedaction", R"({"ret": 200001, "failedFileList": ["/in/x.pdf", 7]})"));
        EXPECT_EQ(app.batch->state(), BatchRedaction::State::Running);
        // A result closed without OK leaves the page as it is.
        replies.push_back(Ret("endBatchRedaction", R"({"ret": 200009})"));
        // 200010 closes the page without a result dialog.
        replies.push_back(Ret("endBatchRedaction", R"({"ret": 200010})"));
    };
    app.batch->Run();

    EXPECT_EQ(replies,
              (std::vector<int>{100031, 100031, 100031, 100031, 100031, 100031, 100001, 0, 0, 0}));
    ASSERT_EQ(platform.batchResults.size(), 2u);
    EXPECT_EQ(platform.batchResults[0].failedFiles,
              (std::vector<std::wstring>{L"/in/x.pdf", L"7"}));
    EXPECT_EQ(platform.pageDialogLog,
              (std::vector<std::string>{"batch RunModal", "batch SetVisible 0",
                                        "batch SetVisible 1", "batch EndModal 2"}));
    // What the ended run left in the queue stays at its front for the next run.
    EXPECT_EQ(app.batch->queue(), (std::deque<std::wstring>{L"/in/a.pdf"}));
}

TEST_F(BatchSessionTest, ACancelledFileListShowsNoPage) {
    app.batch->Run();
    EXPECT_EQ(platform.batchListParents, (std::vector<HostWindow>{host.HostAppGetMainWindow()}));
    EXPECT_TRUE(platform.pageDialogLog.empty());
    EXPECT_EQ(app.batch->state(), BatchRedaction::State::Idle);
    EXPECT_FALSE(app.batchMode);
    EXPECT_EQ(Ret("openNextFileForBatch"), 1);
}

}  // namespace
