// The desktop's account: a typed server must answer before the user is signed in to it, and
// the sign-up page lies on the server signed in to last.
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include "account/account_service.h"
#include "account/server_check.h"
#include "account/sign_up_page.h"
#include "host_test_support.h"

namespace pdfhost::testing {
namespace {

using namespace std::chrono_literals;

// A web server on 127.0.0.1 that answers every request with 404.
class NotFoundServer {
  public:
    NotFoundServer() {
        EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            QTcpSocket* socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                socket->readAll();
                socket->write(
                    "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
                socket->disconnectFromHost();
            });
        });
    }
    std::string Address() const {
        return "http://127.0.0.1:" + std::to_string(server_.serverPort());
    }

  private:
    QTcpServer server_;
};

// A port nobody listens on.
std::string ClosedAddress() {
    QTcpServer probe;
    EXPECT_TRUE(probe.listen(QHostAddress::LocalHost));
    const std::string address = "http://127.0.0.1:" + std::to_string(probe.serverPort());
    probe.close();
    return address;
}

// The host application makes the Qt application the network checks need.
class AccountServerCheck : public HostFixture {};

TEST_F(AccountServerCheck, OnlyAServerThatAnswersPasses) {
    NotFoundServer server;
    EXPECT_EQ(AccountServerProblem(server.Address(), 5s), "");
    EXPECT_EQ(AccountServerProblem(server.Address() + "/base?x=1", 5s), "");
    for (const std::string bad : {"127.0.0.1", "ftp://127.0.0.1/", "http://", "not a server"})
        EXPECT_NE(AccountServerProblem(bad, 5s).find("is not the address"), std::string::npos)
            << bad;
    EXPECT_NE(AccountServerProblem(ClosedAddress(), 5s).find("does not answer"), std::string::npos);
}

TEST_F(AccountServerCheck, SignUpPageLiesOnTheServer) {
    const std::pair<std::string, std::string> rows[] = {
        {"http://127.0.0.1:5000", "http://127.0.0.1:5000/signup"},
        {"https://accounts.example/base/?q=1#top", "https://accounts.example/base/signup"},
        {"", ""},
        {"no server", ""},
    };
    for (const auto& [server, page] : rows)
        EXPECT_EQ(SignUpAddress(server).toString().toStdString(), page) << server;
}

// Waits for the outcome of pressing Sign in: a warning comes up (it is closed, the window
// cancelled and `warned` set), or the window goes. The server check runs an event loop of its
// own, so this looks again until one of the two has happened.
void AwaitOutcome(QPointer<QDialog> dialog, bool* warned, int triesLeft = 500) {
    QTimer::singleShot(10, [dialog, warned, triesLeft] {
        if (dialog == nullptr || !dialog->isVisible())
            return;
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            *warned = true;
            box->accept();
            dialog->reject();
        } else if (triesLeft > 0) {
            AwaitOutcome(dialog, warned, triesLeft - 1);
        }
    });
}

// Types `server` into the sign-in window and presses Sign in.
void TypeServer(const QString& server, bool* warned) {
    *warned = false;
    QTimer::singleShot(0, [server, warned] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QLineEdit*>(QStringLiteral("server"))->setText(server);
        AwaitOutcome(dialog, warned);
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
}

TEST(AccountDesktop, AMistypedServerLeavesTheUserSignedOut) {
    TempFolder profile;
    HostOptions options = OptionsOn(profile.Path(), /*headless=*/false);
    options.signedIn = false;
    HostApp app(options);

    bool warned = false;
    TypeServer(QString::fromStdString(ClosedAddress()), &warned);
    EXPECT_FALSE(app.Account().ShowSignIn(app));
    EXPECT_TRUE(warned);
    EXPECT_FALSE(app.Account().Local().SignedIn());

    NotFoundServer server;
    TypeServer(QString::fromStdString(server.Address()), &warned);
    EXPECT_TRUE(app.Account().ShowSignIn(app));
    EXPECT_FALSE(warned);
    EXPECT_TRUE(app.Account().Local().SignedIn());
    EXPECT_EQ(app.Account().Local().Server(), server.Address());
}

}  // namespace
}  // namespace pdfhost::testing
