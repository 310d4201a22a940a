// Saving under a new name, and the editor's Save command that plug-ins send to the main window.
#include <QMainWindow>
#include <QMetaObject>
#include <fstream>
#include <iterator>
#include <sstream>

#include "automation/script_session.h"
#include "host_test_support.h"
#include "recording_hooks.h"
#include "script_lines.h"
#include "wide_text.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::CallHost;
using testing::Compact;
using Calls = std::vector<std::string>;

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::wstring HostText(void (*read)(HostDoc, HostWideString), HostDoc doc) {
    HostWideString text = CallHost<Op::HostWideStringNew>();
    read(doc, text);
    std::wstring value = testing::WideText(text);
    CallHost<Op::HostWideStringDelete>(text);
    return value;
}

std::wstring FilePath(HostDoc doc) {
    return HostText([](HostDoc d, HostWideString out) { CallHost<Op::HostDocGetFilePath>(d, out); },
                    doc);
}

std::wstring FileName(HostDoc doc) {
    return HostText([](HostDoc d, HostWideString out) { CallHost<Op::HostDocGetFileName>(d, out); },
                    doc);
}

class DocumentSaving : public testing::HostFixture {
  protected:
    DocumentSaving() {
        path_ = testing::WritePdf(files_, "report.pdf", testing::ThreePages());
        app_.LoadPlugins();  // the main window, invisible
        CallHost<Op::HostAppRegisterDocEvents>(hooks_.Record());
    }

    HostDocument& Open() {
        const HostApp::OpenResult result = app_.OpenDocument(path_);
        EXPECT_NE(result.document, nullptr) << result.error;
        hooks_.Take();
        return *result.document;
    }

    int SaveAs(HostDoc doc, const std::string& path) {
        const HostSaveAsOptions options{0, 1, 0, 0};
        return CallHost<Op::HostDocSaveAs>(doc, WideOf(path).c_str(), 0, 0, &options);
    }

    // The editor's Save, sent to the main window as a plug-in sends it.
    void SendSave() {
        auto* window = reinterpret_cast<QObject*>(CallHost<Op::HostAppGetMainWindow>());
        ASSERT_NE(window, nullptr);
        QObject* commands = window->findChild<QObject*>(QStringLiteral("pdfhost.windowCommands"),
                                                        Qt::FindDirectChildrenOnly);
        ASSERT_NE(commands, nullptr);
        QMetaObject::invokeMethod(commands, "command", Qt::DirectConnection, Q_ARG(int, 0xE103));
    }

    void QueueAnswer(const std::string& kind, const Json::Value& value) {
        Json::Value line(Json::objectValue);
        line["host"] = "answer";
        line["dialog"] = kind;
        line["value"] = value;
        session_.HandleLine(Compact(line));
    }

    std::ostringstream out_;
    ScriptSession session_{app_, out_};
    testing::RecordingHooks hooks_;
    std::string path_;
};

TEST_F(DocumentSaving, SaveAsMovesTheDocumentToTheNewFile) {
    HostDocument& document = Open();
    CallHost<Op::HostDocSetChanged>(document.Handle());
    hooks_.Take();
    const std::string before = ReadFile(path_);
    const std::string copy = (files_ / "report_redacted.pdf").string();

    EXPECT_EQ(SaveAs(document.Handle(), copy), 1);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 1"}));
    EXPECT_EQ(FilePath(document.Handle()), WideOf(copy));
    EXPECT_EQ(FileName(document.Handle()), L"report_redacted.pdf");
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(document.Handle()), 0);
    EXPECT_EQ(ReadFile(path_), before) << "the old file stays as it was";
    engine::Context context;
    EXPECT_EQ(engine::Document::Open(context, copy).PageCount(), 3);

    // A temporary document lives on its file from then on.
    HostDocument& fresh = app_.NewDocument();
    hooks_.Take();
    const std::string named = (files_ / "fresh.pdf").string();
    EXPECT_EQ(SaveAs(fresh.Handle(), named), 1);
    EXPECT_EQ(CallHost<Op::HostDocIsTemporary>(fresh.Handle()), 0);
    EXPECT_EQ(FilePath(fresh.Handle()), WideOf(named));
    EXPECT_EQ(CallHost<Op::HostDocSave>(fresh.Handle(), 0, 0, 1, 0), 1);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 2 1", "did-save 2 1"}));
}

TEST_F(DocumentSaving, AFailedSaveAsLeavesNoFileAndTheDocumentAsItWas) {
    HostDocument& document = Open();
    CallHost<Op::HostDocSetChanged>(document.Handle());
    hooks_.Take();
    const auto entries = [&] {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry :
             std::filesystem::directory_iterator(files_.Path()))
            ++count;
        return count;
    };
    const std::size_t before = entries();

    // "report.pdf" is a file, so nothing can be written inside it.
    EXPECT_EQ(SaveAs(document.Handle(), path_ + "/inside.pdf"), 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
    EXPECT_EQ(entries(), before);
    EXPECT_EQ(FilePath(document.Handle()), WideOf(document.Path()));
    EXPECT_EQ(document.Path(), std::filesystem::path(path_).lexically_normal().string());
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(document.Handle()), 1);
    EXPECT_EQ(SaveAs(document.Handle(), ""), 0);
    EXPECT_EQ(SaveAs(nullptr, (files_ / "x.pdf").string()), 0);
    EXPECT_EQ(entries(), before);
}

TEST_F(DocumentSaving, TheSaveCommandSavesADocumentWithAFileInPlace) {
    HostDocument& document = Open();
    CallHost<Op::HostDocSetChanged>(document.Handle());
    hooks_.Take();
    SendSave();
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 1"}));
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(document.Handle()), 0);
    EXPECT_TRUE(testing::TakeScriptLines(out_).empty()) << "no dialog for a document with a file";

    // Other commands do nothing.
    auto* window = reinterpret_cast<QObject*>(CallHost<Op::HostAppGetMainWindow>());
    QMetaObject::invokeMethod(window->findChild<QObject*>(QStringLiteral("pdfhost.windowCommands")),
                              "command", Qt::DirectConnection, Q_ARG(int, 0xE101));
    EXPECT_TRUE(hooks_.Take().empty());
}

TEST_F(DocumentSaving, SavingATemporaryDocumentAsksForAFileAndOpensItInItsPlace) {
    const std::string target = (files_ / "letter.pdf").string();
    app_.NewDocument();
    hooks_.Take();
    QueueAnswer("fileSave", target);

    SendSave();
    EXPECT_EQ(hooks_.Take(),
              (Calls{"did-save 1 1", "closing 1", "will-open", "did-open 2", "activate 2"}));
    const auto lines = testing::TakeScriptLines(out_);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["dialog"].asString(), "fileSave");
    EXPECT_EQ(lines[0]["title"].asString(), "Save As");
    EXPECT_EQ(lines[0]["answer"].asString(), target);

    const HostDocument* saved = app_.Documents().Active();
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(saved->Number(), 2);
    EXPECT_EQ(saved->Path(), target);
    EXPECT_FALSE(saved->IsTemporary());
    EXPECT_EQ(app_.Documents().FindByNumber(1), nullptr);
    EXPECT_TRUE(std::filesystem::is_regular_file(target));
}

TEST_F(DocumentSaving, CancellingTheSaveDialogSavesNothing) {
    app_.NewDocument();
    hooks_.Take();
    QueueAnswer("fileSave", Json::Value());
    SendSave();
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
    auto lines = testing::TakeScriptLines(out_);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0]["answer"].isNull());

    SendSave();  // no answer queued: the dialog is cancelled
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
    lines = testing::TakeScriptLines(out_);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[1]["unanswered"].asString(), "fileSave");
    ASSERT_NE(app_.Documents().FindByNumber(1), nullptr);
    EXPECT_TRUE(app_.Documents().FindByNumber(1)->IsTemporary());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(files_.Path()),
                            std::filesystem::directory_iterator()),
              1);
}

TEST_F(DocumentSaving, ClosingWithTheCheckAsksAboutUnsavedChanges) {
    HostDocument& document = Open();
    const HostDoc handle = document.Handle();
    document.Engine().SetInfoString("Title", "Edited");
    CallHost<Op::HostDocSetChanged>(handle);
    hooks_.Take();

    QueueAnswer("messageBox", 2);  // Cancel: it stays open
    CallHost<Op::HostDocClose>(handle, 1, 0, 0);
    EXPECT_NE(app_.Documents().Find(handle), nullptr);
    auto lines = testing::TakeScriptLines(out_);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["text"].asString(),
              "Do you want to save the changes to report.pdf before closing?");

    CallHost<Op::HostDocClose>(handle, 1, 0, 0);  // unanswered: cancelled as well
    EXPECT_NE(app_.Documents().Find(handle), nullptr);
    EXPECT_EQ(testing::TakeScriptLines(out_).size(), 2u);
    EXPECT_TRUE(hooks_.Take().empty());

    QueueAnswer("messageBox", 6);  // Yes: saved, then closed
    CallHost<Op::HostDocClose>(handle, 1, 0, 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 1", "closing 1"}));
    EXPECT_EQ(testing::TakeScriptLines(out_).size(), 1u);
    engine::Context context;
    EXPECT_EQ(engine::Document::Open(context, path_).InfoString("Title"), "Edited");

    // No drops the changes; without the check, or without changes, nothing is asked.
    HostDocument& again = Open();
    again.Engine().SetInfoString("Title", "Dropped");
    CallHost<Op::HostDocSetChanged>(again.Handle());
    QueueAnswer("messageBox", 7);
    CallHost<Op::HostDocClose>(again.Handle(), 1, 0, 0);
    EXPECT_EQ(engine::Document::Open(context, path_).InfoString("Title"), "Edited");
    CallHost<Op::HostDocSetChanged>(Open().Handle());
    CallHost<Op::HostDocClose>(app_.Documents().Active()->Handle(), 0, 0, 0);
    CallHost<Op::HostDocClose>(Open().Handle(), 1, 0, 0);
    EXPECT_TRUE(app_.Documents().All().empty());
    EXPECT_EQ(testing::TakeScriptLines(out_).size(), 1u);
}

}  // namespace
}  // namespace pdfhost
