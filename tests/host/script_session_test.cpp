// Scripted mode in process: every kind of line.
#include <QCoreApplication>
#include <QTimer>

#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

class ScriptSessionTest : public HostFixture {
  protected:
    std::string Raw(const std::string& line) {
        script_.out.str("");
        session_.HandleLine(line);
        return script_.out.str();
    }

    Scripted script_{app_};
    ScriptSession& session_ = script_.session;
};

TEST_F(ScriptSessionTest, OpenNewAndStateDescribeTheTabs) {
    const std::string path = WritePdf(files_, "a.pdf", ThreePages());
    const auto lines = script_.Run(
        {R"({"host":"open","path":")" + path + "\"}", R"({"host":"new"})", R"({"host":"state"})"});
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0]["opened"].asInt(), 1);
    EXPECT_EQ(lines[0]["path"].asString(), path);
    EXPECT_EQ(lines[1]["opened"].asInt(), 2);
    EXPECT_EQ(lines[1]["path"].asString(), "");

    const Json::Value& documents = lines[2]["state"]["documents"];
    ASSERT_EQ(documents.size(), 2u);
    EXPECT_EQ(documents[0]["path"].asString(), path);
    EXPECT_TRUE(documents[1]["active"].asBool());
}

TEST_F(ScriptSessionTest, ActivateCloseSaveAndStartPageChangeTheState) {
    const std::string path = WritePdf(files_, "a.pdf", ThreePages());
    app_.OpenDocument(path);
    app_.NewDocument();
    Call<HostDocSetChanged>(app_.Documents().FindByNumber(1)->Handle());

    auto lines = script_.Run(
        {R"({"host":"activate","doc":1})", R"({"host":"save","doc":1})", R"({"host":"state"})"});
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0]["state"]["documents"][0]["active"].asBool());
    EXPECT_FALSE(lines[0]["state"]["documents"][0]["modified"].asBool());

    lines = script_.Run({R"({"host":"save","doc":2})", R"({"host":"startPage"})",
                         R"({"host":"close","doc":1})", R"({"host":"state"})"});
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0]["error"].asString(), "cannot save document 2");
    const Json::Value& documents = lines[1]["state"]["documents"];
    ASSERT_EQ(documents.size(), 1u);
    EXPECT_EQ(documents[0]["number"].asInt(), 2);
    EXPECT_FALSE(documents[0]["active"].asBool());
}

TEST_F(ScriptSessionTest, BadLinesAnswerWithAnErrorAndChangeNothing) {
    const std::string missing = (files_ / "missing.pdf").string();
    const auto lines = script_.Run(
        {R"({"host":"open","path":")" + missing + "\"}", "not json", "[1,2]", R"({"host":"open"})",
         R"({"host":"activate","doc":9})", R"({"host":"close","doc":"1"})",
         R"({"host":"wait","ms":-1})", R"({"host":"fly"})", R"({"post":3})", R"({"other":1})",
         R"({"host":"setField","doc":1})", R"({"host":"answer","value":1})",
         R"({"host":)" + std::string(1001, '[') + std::string(1001, ']') + "}"});
    ASSERT_EQ(lines.size(), 13u);
    for (const auto& line : lines)
        EXPECT_TRUE(line["error"].isString()) << Compact(line);
    EXPECT_EQ(lines[0]["error"].asString(), "cannot open " + missing + ": no such file");
    EXPECT_TRUE(lines[1]["error"].asString().starts_with("malformed line: Line 1, Column 1"));
    EXPECT_EQ(lines[4]["error"].asString(), "no document 9");
    EXPECT_EQ(lines[7]["error"].asString(), "unknown host command: fly");
    EXPECT_EQ(lines[10]["error"].asString(), "no document 1");
    EXPECT_EQ(lines[11]["error"].asString(), "\"answer\" needs a \"dialog\" kind");
    EXPECT_EQ(lines[12]["error"].asString(), "malformed line: nested deeper than 256 levels");
    EXPECT_TRUE(app_.Documents().All().empty());
    EXPECT_TRUE(Raw("   ").empty());
}

TEST_F(ScriptSessionTest, ThePageChannelCarriesPostsRepliesAndEvents) {
    QObject* channel = qApp->property(AutomationChannel::kPropertyName).value<QObject*>();
    ASSERT_EQ(channel, &session_.Channel());
    // A plug-in echoes every message by name, without host headers, as the real one does.
    QObject::connect(channel, SIGNAL(webMessageReceived(QString)), channel,
                     SLOT(postWebMessageAsString(QString)));
    QObject::connect(&session_.Channel(), &AutomationChannel::webMessageReceived, [&] {
        QMetaObject::invokeMethod(channel, "executeScript",
                                  Q_ARG(QString, " window.__dispatchEvent({});"));
    });
    const std::string raw = Raw(R"({"post":"[\"m\",\"c\",{},\"id\u00e9\"]\n"})");
    EXPECT_EQ(raw,
              "{\"reply\":\"[\\\"m\\\",\\\"c\\\",{},\\\"id\u00e9\\\"]\\n\"}\n"
              "{\"event\":\" window.__dispatchEvent({});\"}\n");
}

TEST_F(ScriptSessionTest, MessagesOfPlugInsBecomeDialogLines) {
    Call<HostMessageShow>(L"Cannot start: bad key", 0, 0, L"", 0, 0);
    EXPECT_EQ(script_.TakeTexts(),
              std::vector<std::string>{R"({"dialog":"message","text":"Cannot start: bad key"})"});
}

TEST_F(ScriptSessionTest, WaitRunsTheEventLoopAndQuitEnds) {
    bool fired = false;
    QTimer::singleShot(5, [&] { fired = true; });
    EXPECT_EQ(session_.HandleLine(R"({"host":"wait","ms":50})"), ScriptSession::Outcome::kContinue);
    EXPECT_TRUE(fired);
    EXPECT_TRUE(script_.out.str().empty());
    EXPECT_EQ(session_.HandleLine(R"({"host":"quit"})"), ScriptSession::Outcome::kQuit);
}

}  // namespace
}  // namespace pdfhost::testing
