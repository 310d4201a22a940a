// The desktop window: a start tab and one tab per open document, the File, View and Tools
// menus, and the host's document events on tab changes. It is a main frame of the host while it
// lives. Closing a modified document, or the window, asks first what becomes of the changes; saving
// a document that holds unapplied Redact marks asks too.
#pragma once

#include <QMainWindow>
#include <optional>

#include "document_observer.h"

class QAction;
class QTabWidget;

namespace pdfhost {
class HostApp;
}

namespace pdfhost::ui {

class DocumentView;

class MainWindow : public QMainWindow, public DocumentObserver {
    Q_OBJECT

  public:
    explicit MainWindow(HostApp& app, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Opens a file in a new tab. An encrypted file asks for its password until it is right or
    // the user cancels; a file that cannot be opened is told in a message box, and one that had
    // to be repaired in the status bar.
    void OpenFile(const QString& path);

    void DocumentAdded(HostDocument& document) override;
    void DocumentRemoving(HostDocument& document) override;
    void ActiveChanged(HostDocument* active) override;
    void DocumentChanged(HostDocument& document) override;

  protected:
    // Quitting asks about each modified document first, as closing its tab does.
    void closeEvent(QCloseEvent* event) override;

  private:
    void BuildMenus();
    // Closes the document once the user has said what becomes of its changes; false when the
    // user kept it open.
    bool CloseAsked(HostDocument& document);
    // The password the user types for the file `name`; nothing when cancelled. `wrong` says the
    // last one was not right.
    std::optional<QString> AskPassword(const QString& name, bool wrong);
    void OnTabChanged(int index);
    void OnTabCloseRequested(int index);
    DocumentView* ViewAt(int index) const;
    int IndexOf(const HostDocument& document) const;
    HostDocument* CurrentDocument() const;
    static QString TitleOf(const HostDocument& document);

    HostApp& app_;
    QTabWidget* tabs_;
    QAction* thumbnailsShown_ = nullptr;
    QAction* redactArea_ = nullptr;
};

}  // namespace pdfhost::ui
