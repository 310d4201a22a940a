#include "lent_web_view.h"

#include <QDir>
#include <QMetaObject>
#include <QStringList>
#include <QUrl>

LentWebView::LentWebView(HostWebView handle) : view_(reinterpret_cast<QWidget*>(handle)) {}

void LentWebView::Navigate(const std::wstring& url) {
    if (view_) {
        QMetaObject::invokeMethod(view_, "navigate", Qt::DirectConnection,
                                  Q_ARG(QString, QString::fromStdWString(url)));
    }
}

void LentWebView::LoadHtml(const std::string& html, const std::wstring& baseFolder) {
    if (!view_)
        return;
    const QString base =
        QUrl::fromLocalFile(QDir(QString::fromStdWString(baseFolder)).absolutePath() + "/")
            .toString();
    QMetaObject::invokeMethod(view_, "loadHtml", Qt::DirectConnection,
                              Q_ARG(QString, QString::fromStdString(html)), Q_ARG(QString, base));
}

std::wstring LentWebView::Location() const {
    QString location;
    if (view_) {
        QMetaObject::invokeMethod(view_, "location", Qt::DirectConnection,
                                  Q_RETURN_ARG(QString, location));
    }
    return location.toStdWString();
}

int LentWebView::EngineMajorVersion() const {
    int version = 0;
    if (view_) {
        QMetaObject::invokeMethod(view_, "engineMajorVersion", Qt::DirectConnection,
                                  Q_RETURN_ARG(int, version));
    }
    return version;
}

bool LentWebView::CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                             std::wstring* result) {
    if (!view_)
        return false;
    QStringList list;
    for (const std::wstring& argument : arguments)
        list.append(QString::fromStdWString(argument));
    const QString function = QString::fromStdWString(name);
    if (result == nullptr) {
        return QMetaObject::invokeMethod(view_, "callScript", Qt::DirectConnection,
                                         Q_ARG(QString, function), Q_ARG(QStringList, list));
    }
    QString text;
    const bool called = QMetaObject::invokeMethod(
        view_, "callScriptForResult", Qt::DirectConnection, Q_RETURN_ARG(QString, text),
        Q_ARG(QString, function), Q_ARG(QStringList, list));
    if (called)
        *result = text.toStdWString();
    return called;
}

void LentWebView::Hide() {
    if (view_)
        view_->hide();
}
