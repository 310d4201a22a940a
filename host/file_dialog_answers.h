// Headless file dialogs. Every QFileDialog that is shown (the host's own and those of plug-ins)
// is answered from the queued dialog answers as soon as its event loop runs, as a user would:
//   accept mode Save          -> kind "fileSave": a path, or null for Cancel
//   file mode Directory       -> kind "folder":   a path, or null
//   any other (open)          -> kind "fileOpen": an array of paths (a single path will do),
//                                                 or null
// In scripted mode it prints {"dialog":KIND,"title":T,"answer":A}; without a queued answer the
// dialog is cancelled and {"unanswered":KIND} follows. An answer the dialog cannot take (a file
// that does not exist, a folder where a file is wanted) cancels it with an {"error":...} line.
// The answer stands for a confirmed choice: saving over an existing file asks nothing.
#pragma once

#include <QObject>

class QEvent;
class QFileDialog;

namespace pdfhost {

class HostApp;

class FileDialogAnswers : public QObject {
    Q_OBJECT

  public:
    // Watches the whole application until destroyed.
    explicit FileDialogAnswers(HostApp& app);
    ~FileDialogAnswers() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Answer(QFileDialog& dialog);

    HostApp& app_;
};

}  // namespace pdfhost
