// The offline pages and pictures written into the service folder.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "page_files.h"

namespace {

QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(PageFilesTest, FilesAreWrittenOnlyWhenMissingAndTheUpgradePageBringsThePictures) {
    QTemporaryDir root;
    const QDir folder(root.filePath("userdata/sblm.io"));
    const std::wstring base = folder.path().toStdWString();

    EXPECT_EQ(EnsurePageFile(base, PageFile::Offline),
              folder.filePath("offline.html").toStdWString());
    EXPECT_TRUE(Read(folder.filePath("offline.html")).contains("No network is available,<br>"));
    EXPECT_FALSE(folder.exists("IE.png"));

    QFile mine(folder.filePath("upgrade.html"));
    ASSERT_TRUE(mine.open(QIODevice::WriteOnly));
    mine.write("kept");
    mine.close();
    EnsurePageFile(base, PageFile::Upgrade);
    EXPECT_EQ(Read(folder.filePath("upgrade.html")), QByteArray("kept"));
    EXPECT_FALSE(folder.exists("tips.png"));  // nothing was written, so no pictures either

    ASSERT_TRUE(QFile::remove(folder.filePath("upgrade.html")));
    EnsurePageFile(base, PageFile::Upgrade);
    EXPECT_TRUE(Read(folder.filePath("upgrade.html")).contains("Your browser is out-of-date!"));
    EXPECT_TRUE(Read(folder.filePath("IE.png")).startsWith("\x89PNG"));
    EXPECT_TRUE(Read(folder.filePath("tips.png")).startsWith("\x89PNG"));
    EXPECT_EQ(FileAddress(L"/a b/offline.html"), L"file:///a%20b/offline.html");
}

}  // namespace
