// Headless file dialogs answered from the queued answers, as the plug-in's own dialogs are.
#include <QFileDialog>

#include "host_test_support.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

class FileDialogAnswersTest : public HostFixture {
  protected:
    FileDialogAnswersTest() {
        first_ = WritePdf(files_, "first.pdf", ThreePages());
        second_ = WritePdf(other_, "second.pdf", ThreePages());
    }

    // A dialog set up as the plug-in sets up its own: non-native, modal, run with exec().
    struct Outcome {
        bool accepted = false;
        QStringList files;
    };
    static Outcome Run(QFileDialog::AcceptMode accept, QFileDialog::FileMode mode,
                       const QString& title = {}) {
        QFileDialog dialog(nullptr, title);
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setAcceptMode(accept);
        dialog.setFileMode(mode);
        dialog.setNameFilter(QStringLiteral("PDF Files (*.pdf)"));
        Outcome outcome;
        outcome.accepted = dialog.exec() == QDialog::Accepted;
        if (outcome.accepted)
            outcome.files = dialog.selectedFiles();
        return outcome;
    }

    static Json::Value Paths(std::initializer_list<std::string> paths) {
        Json::Value array(Json::arrayValue);
        for (const auto& path : paths)
            array.append(path);
        return array;
    }

    TempFolder other_;
    std::string first_;
    std::string second_;
    Scripted script_{app_};
};

TEST_F(FileDialogAnswersTest, AQueuedFileOpenAnswerPicksTheFilesAndIsPrinted) {
    script_.Answer("fileOpen", Paths({first_, second_}));
    const Outcome picked = Run(QFileDialog::AcceptOpen, QFileDialog::ExistingFiles, "Select");
    EXPECT_TRUE(picked.accepted);
    EXPECT_EQ(picked.files,
              QStringList({QString::fromStdString(first_), QString::fromStdString(second_)}));
    auto lines = script_.Take();
    ASSERT_EQ(lines.size(), 1u);
    Json::Value expected(Json::objectValue);
    expected["dialog"] = "fileOpen";
    expected["title"] = "Select";
    expected["answer"] = Paths({first_, second_});
    EXPECT_EQ(lines[0], expected) << Compact(lines[0]);

    // One path as a plain string will do; a dialog for one file takes the first of several.
    script_.Answer("fileOpen", second_);
    EXPECT_EQ(Run(QFileDialog::AcceptOpen, QFileDialog::ExistingFile).files,
              QStringList({QString::fromStdString(second_)}));
    script_.Answer("fileOpen", Paths({first_, second_}));
    EXPECT_EQ(Run(QFileDialog::AcceptOpen, QFileDialog::ExistingFile).files,
              QStringList({QString::fromStdString(first_)}));
    EXPECT_EQ(script_.Take().size(), 2u);
}

TEST_F(FileDialogAnswersTest, AnswersTheDialogCannotTakeCancelItWithAnError) {
    const std::string missing = (files_ / "missing.pdf").string();
    script_.Answer("fileOpen", Paths({first_, missing}));
    EXPECT_FALSE(Run(QFileDialog::AcceptOpen, QFileDialog::ExistingFiles).accepted);
    script_.Answer("fileOpen", 42);
    EXPECT_FALSE(Run(QFileDialog::AcceptOpen, QFileDialog::ExistingFiles).accepted);
    script_.Answer("folder", first_);
    EXPECT_FALSE(Run(QFileDialog::AcceptOpen, QFileDialog::Directory).accepted);
    script_.Answer("fileSave", files_.Path().string());
    EXPECT_FALSE(Run(QFileDialog::AcceptSave, QFileDialog::AnyFile).accepted);

    const auto lines = script_.Take();
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[1]["error"].asString(), "fileOpen answer: no file " + missing);
    EXPECT_EQ(lines[3]["error"].asString(), "fileOpen answer: expected an array of paths or null");
    EXPECT_EQ(lines[5]["error"].asString(), "folder answer: no folder " + first_);
    EXPECT_EQ(lines[7]["error"].asString(),
              "fileSave answer: " + files_.Path().string() + " is a folder");
}

TEST_F(FileDialogAnswersTest, SaveAndFolderDialogsTakeTheirPath) {
    // Saving over an existing file asks nothing more: the answer is the user's confirmed choice.
    script_.Answer("fileSave", first_);
    const Outcome over = Run(QFileDialog::AcceptSave, QFileDialog::AnyFile, "Save As");
    EXPECT_TRUE(over.accepted);
    EXPECT_EQ(over.files, QStringList({QString::fromStdString(first_)}));

    script_.Answer("folder", other_.Path().string());
    const Outcome folder = Run(QFileDialog::AcceptOpen, QFileDialog::Directory);
    EXPECT_TRUE(folder.accepted);
    EXPECT_EQ(folder.files, QStringList({QString::fromStdString(other_.Path().string())}));
}

}  // namespace
}  // namespace pdfhost::testing
