// Headless answers to the dialogs of a batch: the file list, the output options, the list of
// files a batch would overwrite, and the result. An application-wide event filter notices each
// dialog by its object name when it is shown and, once its event loop runs, answers it from the
// queued answer of its kind through its controls (found by object name) and Qt's meta-object
// system. Each answer gives its line (see the answer files); lines go to the script output when
// there is one and to the listener when one is set.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <optional>

#include <json/value.h>

#include "automation/output_options_answer.h"

namespace pdfhost {

class HostApp;

class BatchDialogAnswers : public QObject {
    Q_OBJECT

  public:
    using Listener = std::function<void(const Json::Value& line)>;

    // Installs the filter on the application object; it goes with this object.
    explicit BatchDialogAnswers(HostApp& app, Listener listener = {});
    ~BatchDialogAnswers() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Answer(const QPointer<QDialog>& dialog, const QString& name);
    void Emit(const Json::Value& line);

    HostApp& app_;
    Listener listener_;
    // The file list being answered, whose record the options dialog writes back to.
    QPointer<QDialog> fileList_;
    // The options line, until the file list has the record written back.
    std::optional<OptionsOutcome> pendingOptions_;
};

}  // namespace pdfhost
