#include "headless_url_handlers.h"

#include <QDesktopServices>
#include <iostream>

namespace pdfhost {
namespace {

constexpr const char* kSchemes[] = {"http", "https", "file", "mailto"};

}  // namespace

HeadlessUrlHandlers::HeadlessUrlHandlers() {
    for (const char* scheme : kSchemes)
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "Open");
}

HeadlessUrlHandlers::~HeadlessUrlHandlers() {
    for (const char* scheme : kSchemes)
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
}

void HeadlessUrlHandlers::Open(const QUrl& url) {
    std::cerr << "pdfhost: open " << url.toString().toStdString() << std::endl;
}

}  // namespace pdfhost
