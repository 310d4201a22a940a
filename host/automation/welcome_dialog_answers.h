// Headless answers to the plug-in's welcome dialog. An application-wide event filter notices the
// dialog (by its object name) when it is shown and, once its event loop runs, presses the button
// of the queued "welcome" answer: 0 sign in, 1 sign up, 2 not now. With no usable answer the
// dialog is cancelled. In scripted mode it prints {"dialog":"welcome","title":T,"answer":N}, and
// {"unanswered":"welcome"} after it when it was cancelled for want of an answer.
#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace pdfhost {

class HostApp;

class WelcomeDialogAnswers : public QObject {
    Q_OBJECT

  public:
    static constexpr const char* kDialogName = "CSablemarkWelcomeDlg";

    // Installs the filter on the application object; it goes with this object.
    explicit WelcomeDialogAnswers(HostApp& app);
    ~WelcomeDialogAnswers() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Answer(const QPointer<QWidget>& dialog);

    HostApp& app_;
};

}  // namespace pdfhost
