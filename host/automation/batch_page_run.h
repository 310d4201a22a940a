// The batch page in scripted mode. When the batch dialog (object name "CProfileHtmlDlg") is
// first shown, its line {"dialog":"batchPage","title":T,"url":U} is printed and the script's
// input is read inside the dialog's modal run, one line at a time, until the dialog finishes;
// then {"dialog":"batchPage","closed":R} is printed, R being the dialog's result. A quit line, or
// the end of input, closes the dialog first as its close button would.
#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace pdfhost {

class JsonLineWriter;

class BatchPageRun : public QObject {
    Q_OBJECT

  public:
    static constexpr const char* kDialogName = "CProfileHtmlDlg";

    // The next input line, or nothing at the end of input.
    using LineReader = std::function<std::optional<std::string>()>;
    // Handles one line; true when the line asks to quit.
    using LineHandler = std::function<bool(const std::string& line)>;

    // Installs the filter on the application object; it goes with this object.
    BatchPageRun(JsonLineWriter& out, LineReader read, LineHandler handle);
    ~BatchPageRun() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

    // The batch dialog is up: from its line to its closing.
    bool IsUp() const { return dialog_ != nullptr; }
    // Whether the dialog's window is shown; false when it is not up.
    bool IsVisible() const { return dialog_ != nullptr && dialog_->isVisible(); }
    // Whether the input asked to quit (or ended) while the dialog was up; the request is
    // forgotten.
    bool TakeQuitRequest() { return std::exchange(quitRequested_, false); }

  private:
    void Serve(const QPointer<QDialog>& dialog);
    void Close();

    JsonLineWriter& out_;
    LineReader read_;
    LineHandler handle_;
    QPointer<QDialog> dialog_;
    std::optional<int> closedWith_;
    bool quitRequested_ = false;
};

}  // namespace pdfhost
