#include "account/sign_up_page.h"

#include <QDesktopServices>
#include <QMainWindow>
#include <QMessageBox>

#include "host_app.h"

namespace pdfhost {

QUrl SignUpAddress(const std::string& server) {
    if (server.empty())
        return {};
    QUrl url(QString::fromStdString(server));
    if (!url.isValid() || url.host().isEmpty())
        return {};
    QString path = url.path();
    if (!path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    url.setPath(path + QStringLiteral("signup"));
    url.setQuery(QString());
    url.setFragment(QString());
    return url;
}

bool OpenSignUpPage(HostApp& app) {
    const QUrl url = SignUpAddress(app.Account().Local().Server());
    if (url.isEmpty()) {
        QMessageBox::information(app.MainWindow(), QObject::tr("Create an account"),
                                 QObject::tr("No account server is chosen yet. Choose one in "
                                             "Account › Sign in, then create the account there."));
        return false;
    }
    return QDesktopServices::openUrl(url);
}

}  // namespace pdfhost
