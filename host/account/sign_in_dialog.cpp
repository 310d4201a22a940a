#include "account/sign_in_dialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>

#include "account/local_account.h"
#include "account/server_check.h"
#include "automation/json_line_writer.h"
#include "host_app.h"

namespace pdfhost {
namespace {

constexpr const char* kKind = "signIn";
constexpr std::chrono::seconds kServerTimeout{8};

std::optional<std::string> AskOnDesktop(HostApp& app, const LocalAccount& account) {
    QDialog dialog(app.MainWindow());
    dialog.setObjectName("pdfhost.signIn");
    dialog.setWindowTitle(QObject::tr("Sign in"));
    auto* layout = new QFormLayout(&dialog);
    const AccountUser& user = account.User();
    auto* name = new QLabel(
        QString::fromStdString(user.firstName + " " + user.lastName + " <" + user.email + ">"),
        &dialog);
    layout->addRow(QObject::tr("Account:"), name);
    auto* server = new QLineEdit(QString::fromStdString(account.Server()), &dialog);
    server->setObjectName("server");
    server->setPlaceholderText(QObject::tr("the plug-in's default server"));
    layout->addRow(QObject::tr("Server:"), server);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    buttons->button(QDialogButtonBox::Ok)->setText(QObject::tr("Sign in"));
    // A server the user typed must answer before the user is signed in to it; the dialog stays
    // open to correct the address or cancel.
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, [&dialog, server] {
        const QString typed = server->text().trimmed();
        const std::string problem = typed.isEmpty()
                                        ? std::string()
                                        : AccountServerProblem(typed.toStdString(), kServerTimeout);
        if (problem.empty()) {
            dialog.accept();
            return;
        }
        QMessageBox::warning(&dialog, QObject::tr("Sign in"),
                             QString::fromStdString(problem) + QLatin1Char('\n') +
                                 QObject::tr("You are not signed in."));
    });
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addRow(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return server->text().trimmed().toStdString();
}

}  // namespace

std::optional<std::string> AskToSignIn(HostApp& app, const LocalAccount& account) {
    if (!app.Options().headless)
        return AskOnDesktop(app, account);

    const std::optional<Json::Value> queued = app.Answers().Take(kKind);
    const bool answered = queued.has_value() && queued->isBool();
    const bool signIn = answered && queued->asBool();
    if (JsonLineWriter* out = app.ScriptWriter()) {
        Json::Value line(Json::objectValue);
        line["dialog"] = kKind;
        line["server"] = account.Server();
        line["answer"] = signIn;
        out->Write(line);
        if (!answered) {
            Json::Value note(Json::objectValue);
            note["unanswered"] = kKind;
            out->Write(note);
        }
    }
    if (!signIn)
        return std::nullopt;
    return std::string();
}

}  // namespace pdfhost
