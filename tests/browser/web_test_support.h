// Waiting on the event loop, and reading a page's state, for the web engine tests.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QVariant>
#include <QWebEnginePage>
#include <functional>

// Runs the event loop until `done` holds or `milliseconds` have passed; whether it holds.
inline bool WaitFor(const std::function<bool()>& done, int milliseconds = 20000) {
    QDeadlineTimer deadline(milliseconds);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

// Runs the event loop for `milliseconds`.
inline void Spin(int milliseconds) {
    WaitFor([] { return false; }, milliseconds);
}

// The value of `script` in the page, or an invalid value when the page gave none in time.
inline QVariant Evaluate(QWebEnginePage& page, const QString& script) {
    QVariant result;
    bool done = false;
    page.runJavaScript(script, [&](const QVariant& value) {
        result = value;
        done = true;
    });
    WaitFor([&] { return done; }, 10000);
    return result;
}
