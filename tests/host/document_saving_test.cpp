// Saving under a new name, and the editor's Save command that plug-ins send to the main window.
#include <QMainWindow>
#include <QMetaObject>

#include "recording_hooks.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

using Calls = std::vector<std::string>;

std::wstring FilePath(HostDoc doc) {
    return ReadWide([&](HostWideString out) { Call<HostDocGetFilePath>(doc, out); });
}

class DocumentSaving : public HostFixture {
  protected:
    DocumentSaving() {
        path_ = WritePdf(files_, "report.pdf", ThreePages());
        app_.LoadPlugins();  // the main window, invisible
        Call<HostAppRegisterDocEvents>(hooks_.Record());
    }

    HostDocument& Open(bool changed = false) {
        HostDocument& document = OpenPath(path_);
        if (changed)
            Call<HostDocSetChanged>(document.Handle());
        hooks_.Take();
        return document;
    }

    int SaveAs(HostDoc doc, const std::string& path) {
        const HostSaveAsOptions options{0, 1, 0, 0};
        return Call<HostDocSaveAs>(doc, WideOf(path).c_str(), 0, 0, &options);
    }

    // An editor command (0xE103 is Save), sent to the main window as a plug-in sends it.
    void SendCommand(int command = 0xE103) {
        auto* window = reinterpret_cast<QObject*>(Call<HostAppGetMainWindow>());
        ASSERT_NE(window, nullptr);
        QObject* commands = window->findChild<QObject*>(QStringLiteral("pdfhost.windowCommands"),
                                                        Qt::FindDirectChildrenOnly);
        ASSERT_NE(commands, nullptr);
        QMetaObject::invokeMethod(commands, "command", Qt::DirectConnection, Q_ARG(int, command));
    }

    auto FileCount() const {
        return std::distance(std::filesystem::directory_iterator(files_.Path()), {});
    }

    Scripted script_{app_};
    RecordingHooks hooks_;
    std::string path_;
};

TEST_F(DocumentSaving, SaveAsMovesTheDocumentToTheNewFile) {
    HostDocument& document = Open(true);
    const std::string before = FileBytes(path_);
    const std::string copy = (files_ / "report_redacted.pdf").string();

    EXPECT_EQ(SaveAs(document.Handle(), copy), 1);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 1"}));
    EXPECT_EQ(FilePath(document.Handle()), WideOf(copy));
    EXPECT_EQ(
        ReadWide([&](HostWideString out) { Call<HostDocGetFileName>(document.Handle(), out); }),
        L"report_redacted.pdf");
    EXPECT_EQ(Call<HostDocIsModified>(document.Handle()), 0);
    EXPECT_EQ(FileBytes(path_), before) << "the old file stays as it was";
    engine::Context context;
    EXPECT_EQ(engine::Document::Open(context, copy).PageCount(), 3);

    // A temporary document lives on its file from then on.
    HostDocument& fresh = app_.NewDocument();
    hooks_.Take();
    const std::string named = (files_ / "fresh.pdf").string();
    EXPECT_EQ(SaveAs(fresh.Handle(), named), 1);
    EXPECT_EQ(Call<HostDocIsTemporary>(fresh.Handle()), 0);
    EXPECT_EQ(FilePath(fresh.Handle()), WideOf(named));
    EXPECT_EQ(Call<HostDocSave>(fresh.Handle(), 0, 0, 1, 0), 1);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 2 1", "did-save 2 1"}));
}

TEST_F(DocumentSaving, AFailedSaveAsLeavesNoFileAndTheDocumentAsItWas) {
    HostDocument& document = Open(true);
    const auto before = FileCount();

    // "report.pdf" is a file, so nothing can be written inside it.
    EXPECT_EQ(SaveAs(document.Handle(), path_ + "/inside.pdf"), 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
    EXPECT_EQ(FileCount(), before);
    EXPECT_EQ(FilePath(document.Handle()), WideOf(document.Path()));
    EXPECT_EQ(document.Path(), std::filesystem::path(path_).lexically_normal().string());
    EXPECT_EQ(Call<HostDocIsModified>(document.Handle()), 1);
    EXPECT_EQ(SaveAs(document.Handle(), ""), 0);
    EXPECT_EQ(SaveAs(nullptr, (files_ / "x.pdf").string()), 0);
    EXPECT_EQ(FileCount(), before);
}

TEST_F(DocumentSaving, CommandsOtherThanSaveDoNothing) {
    Open(true);
    SendCommand(0xE101);
    EXPECT_TRUE(hooks_.Take().empty());
}

TEST_F(DocumentSaving, SavingATemporaryDocumentAsksForAFileAndOpensItInItsPlace) {
    const std::string target = (files_ / "letter.pdf").string();
    app_.NewDocument();
    hooks_.Take();
    script_.Answer("fileSave", target);

    SendCommand();
    EXPECT_EQ(hooks_.Take(),
              (Calls{"did-save 1 1", "closing 1", "will-open", "did-open 2", "activate 2"}));
    Json::Value asked(Json::objectValue);
    asked["dialog"] = "fileSave";
    asked["title"] = "Save As";
    asked["answer"] = target;
    EXPECT_EQ(script_.Take(), std::vector<Json::Value>{asked});

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
    script_.Answer("fileSave", Json::Value());
    SendCommand();
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
    EXPECT_EQ(script_.TakeTexts(),
              (Calls{R"({"answer":null,"dialog":"fileSave","title":"Save As"})"}));

    SendCommand();  // no answer queued: the dialog is cancelled
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 0"}));
    EXPECT_EQ(script_.TakeTexts(),
              (Calls{R"({"answer":null,"dialog":"fileSave","title":"Save As"})",
                     R"({"unanswered":"fileSave"})"}));
    ASSERT_NE(app_.Documents().FindByNumber(1), nullptr);
    EXPECT_TRUE(app_.Documents().FindByNumber(1)->IsTemporary());
    EXPECT_EQ(FileCount(), 1);
}

TEST_F(DocumentSaving, ClosingWithTheCheckAsksAboutUnsavedChanges) {
    HostDocument& document = Open();
    const HostDoc handle = document.Handle();
    document.Engine().SetInfoString("Title", "Edited");
    Call<HostDocSetChanged>(handle);
    hooks_.Take();

    script_.Answer("messageBox", 2);  // Cancel: it stays open
    Call<HostDocClose>(handle, 1, 0, 0);
    EXPECT_NE(app_.Documents().Find(handle), nullptr);
    const auto lines = script_.Take();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["text"].asString(),
              "Do you want to save the changes to report.pdf before closing?");

    Call<HostDocClose>(handle, 1, 0, 0);  // unanswered: cancelled as well
    EXPECT_NE(app_.Documents().Find(handle), nullptr);
    EXPECT_EQ(script_.Take().size(), 2u);
    EXPECT_TRUE(hooks_.Take().empty());

    script_.Answer("messageBox", 6);  // Yes: saved, then closed
    Call<HostDocClose>(handle, 1, 0, 0);
    EXPECT_EQ(hooks_.Take(), (Calls{"did-save 1 1", "closing 1"}));
    EXPECT_EQ(script_.Take().size(), 1u);
    engine::Context context;
    EXPECT_EQ(engine::Document::Open(context, path_).InfoString("Title"), "Edited");

    // No drops the changes; without the check, or without changes, nothing is asked.
    HostDocument& again = Open();
    again.Engine().SetInfoString("Title", "Dropped");
    Call<HostDocSetChanged>(again.Handle());
    script_.Answer("messageBox", 7);
    Call<HostDocClose>(again.Handle(), 1, 0, 0);
    EXPECT_EQ(engine::Document::Open(context, path_).InfoString("Title"), "Edited");
    Open(true);
    Call<HostDocClose>(app_.Documents().Active()->Handle(), 0, 0, 0);
    Call<HostDocClose>(Open().Handle(), 1, 0, 0);
    EXPECT_TRUE(app_.Documents().All().empty());
    EXPECT_EQ(script_.Take().size(), 1u);
}

}  // namespace
}  // namespace pdfhost::testing
