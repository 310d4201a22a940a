#include "page_files.h"

#include <QDir>
#include <QFile>
#include <QUrl>

namespace {

struct PageFileInfo {
    const char* name;
    const char* resource;
};

constexpr PageFileInfo kFiles[] = {
    {"offline.html", ":/tarvosablemark/page/offline.html"},
    {"upgrade.html", ":/tarvosablemark/page/upgrade.html"},
    {"IE.png", ":/tarvosablemark/page/IE.png"},
    {"tips.png", ":/tarvosablemark/page/tips.png"},
};

const PageFileInfo& InfoOf(PageFile file) {
    return kFiles[static_cast<int>(file)];
}

QString PathOf(const std::wstring& folder, PageFile file) {
    return QDir(QString::fromStdWString(folder)).filePath(QString::fromLatin1(InfoOf(file).name));
}

void WriteFromResource(const QString& path, PageFile file) {
    QFile resource(QString::fromLatin1(InfoOf(file).resource));
    QFile target(path);
    if (resource.open(QIODevice::ReadOnly) && target.open(QIODevice::WriteOnly))
        target.write(resource.readAll());
}

}  // namespace

std::wstring EnsurePageFile(const std::wstring& folder, PageFile file) {
    const QString path = PathOf(folder, file);
    QFile existing(path);
    if (!existing.open(QIODevice::ReadOnly)) {
        QDir().mkpath(QString::fromStdWString(folder));
        WriteFromResource(path, file);
        if (file == PageFile::Upgrade) {
            for (PageFile picture : {PageFile::BrowserPicture, PageFile::TipsPicture})
                WriteFromResource(PathOf(folder, picture), picture);
        }
    }
    return path.toStdWString();
}

std::string PageResource(PageFile file) {
    QFile resource(QString::fromLatin1(InfoOf(file).resource));
    return resource.open(QIODevice::ReadOnly) ? resource.readAll().toStdString() : std::string();
}

std::wstring FileAddress(const std::wstring& path) {
    return QUrl::fromLocalFile(QString::fromStdWString(path))
        .toString(QUrl::FullyEncoded)
        .toStdWString();
}
