// LentWebView: the web view that the host lends through its browser table, for a page dialog
// whose own browser can't start. The host's view is a QWidget driven through its invokable
// methods: navigate(QString), loadHtml(QString html, QString baseUrl), location() -> QString,
// engineMajorVersion() -> int, callScript(QString name, QStringList arguments) and
// callScriptForResult(QString name, QStringList arguments) -> QString.
#pragma once

#include <QPointer>
#include <QWidget>
#include <string>
#include <vector>

#include "host/host_abi.h"

class LentWebView {
  public:
    LentWebView() = default;
    explicit LentWebView(HostWebView handle);

    // False when there is no view, also once the host has taken it down.
    bool IsSet() const { return !view_.isNull(); }
    void Reset() { view_.clear(); }

    void Navigate(const std::wstring& url);
    // Shows `html`, whose relative addresses resolve in `baseFolder`.
    void LoadHtml(const std::string& html, const std::wstring& baseFolder);
    std::wstring Location() const;
    // The major version of the view's engine; 0 when the view doesn't say.
    int EngineMajorVersion() const;
    // Calls the page's function `name` with the arguments as strings. With `result`, waits for
    // the call and stores its text there. False when the view took no call.
    bool CallScript(const std::wstring& name, const std::vector<std::wstring>& arguments,
                    std::wstring* result);
    void Hide();

  private:
    QPointer<QWidget> view_;
};
