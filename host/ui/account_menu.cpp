#include "ui/account_menu.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include "account/account_service.h"
#include "account/sign_up_page.h"
#include "host_app.h"

namespace pdfhost::ui {

void AddAccountMenu(HostApp& app, QMainWindow& window) {
    QMenu* menu = window.menuBar()->addMenu(QObject::tr("&Account"));
    menu->setObjectName(QStringLiteral("AccountMenu"));
    QAction* signIn = menu->addAction(QObject::tr("Sign &in..."), &window, [&app, &window] {
        if (app.Account().ShowSignIn(app))
            window.statusBar()->showMessage(QObject::tr("Signed in."), 5000);
    });
    QAction* signOut = menu->addAction(QObject::tr("Sign &out"), &window, [&app, &window] {
        app.Account().SignOut();
        window.statusBar()->showMessage(QObject::tr("Signed out."), 5000);
    });
    menu->addAction(QObject::tr("&Create an account..."), &window, [&app] { OpenSignUpPage(app); });
    QObject::connect(menu, &QMenu::aboutToShow, menu, [&app, signIn, signOut] {
        const bool signedIn = app.Account().Local().SignedIn();
        signIn->setEnabled(!signedIn);
        signOut->setEnabled(signedIn);
    });
}

}  // namespace pdfhost::ui
