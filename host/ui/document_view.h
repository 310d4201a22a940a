// The view of one document in its tab: the current page, rendered, with page up/down. It
// follows the document's view model (page, scrolling, selection, repaints) and Ctrl+Z undoes
// the last annotation change.
#pragma once

#include <QWidget>

#include "text_selection.h"

class QLabel;
class QScrollArea;
class QPushButton;

namespace pdfhost {
class HostDocument;
}

namespace pdfhost::ui {

class DocumentView : public QWidget {
    Q_OBJECT

  public:
    explicit DocumentView(HostDocument& document, QWidget* parent = nullptr);
    ~DocumentView() override;

    HostDocument& Document() const { return document_; }
    int CurrentPage() const { return page_; }
    void ShowPage(int page);
    // Renders the current page again (after a change of the document).
    void Refresh();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    // The view model changed: repaint when needed, follow its scrolling.
    void OnViewChanged();
    void ApplyScroll();
    void UserScrolled();

    HostDocument& document_;
    bool syncing_ = false;
    bool refreshQueued_ = false;
    TextSelection drawnSelection_;
    int page_ = 0;
    QScrollArea* scroll_;
    QLabel* picture_;
    QLabel* pageLabel_;
    QPushButton* previous_;
    QPushButton* next_;
};

}  // namespace pdfhost::ui
