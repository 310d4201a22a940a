// The desktop window: a start tab and one tab per open document, a File menu, and the host's
// document events on tab changes. It is a main frame of the host while it lives.
#pragma once

#include <QMainWindow>

#include "document_observer.h"

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

    // Opens a file in a new tab; a file that cannot be opened is told in a message box.
    void OpenFile(const QString& path);

    void DocumentAdded(HostDocument& document) override;
    void DocumentRemoving(HostDocument& document) override;
    void ActiveChanged(HostDocument* active) override;
    void DocumentChanged(HostDocument& document) override;

  private:
    void BuildMenus();
    void OnTabChanged(int index);
    void OnTabCloseRequested(int index);
    DocumentView* ViewAt(int index) const;
    int IndexOf(const HostDocument& document) const;
    HostDocument* CurrentDocument() const;
    static QString TitleOf(const HostDocument& document);

    HostApp& app_;
    QTabWidget* tabs_;
};

}  // namespace pdfhost::ui
