// Headless, no browser or mail program may start: addresses that anything in the process opens
// through QDesktopServices (the host's browser extension, plug-ins) are printed on stderr as
// "pdfhost: open <url>" instead, and count as opened.
#pragma once

#include <QObject>
#include <QUrl>

namespace pdfhost {

class HeadlessUrlHandlers : public QObject {
    Q_OBJECT

  public:
    // Takes over the schemes http, https, file and mailto until destroyed.
    HeadlessUrlHandlers();
    ~HeadlessUrlHandlers() override;

  public slots:
    void Open(const QUrl& url);
};

}  // namespace pdfhost
