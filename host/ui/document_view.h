// The view of one document in its tab: the current page, rendered, with page up/down.
#pragma once

#include <QWidget>

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

    HostDocument& Document() const { return document_; }
    int CurrentPage() const { return page_; }
    void ShowPage(int page);
    // Renders the current page again (after a change of the document).
    void Refresh();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    HostDocument& document_;
    int page_ = 0;
    QScrollArea* scroll_;
    QLabel* picture_;
    QLabel* pageLabel_;
    QPushButton* previous_;
    QPushButton* next_;
};

}  // namespace pdfhost::ui
