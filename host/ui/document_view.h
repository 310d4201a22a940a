// The view of one document in its tab: page thumbnails and the current page, rendered, with
// page up/down, a page number to go to, Find (Ctrl+F, then Enter or F3 for the next match, Shift
// for the previous one), zoom (Ctrl+plus, Ctrl+minus, Ctrl+wheel) and fit to width or to the page,
// kept as the view is resized (when the task pane opens, say). It follows the document's view
// model (page, scrolling, selection, repaints), whose device space stays the page at 100 %, and
// Ctrl+Z undoes the last annotation change. The Redact tool turns a rectangle dragged over the
// page into a Redact annotation of the user's; Redact selection covers the selected text.
#pragma once

#include <QWidget>
#include <optional>

#include "text_find.h"
#include "text_selection.h"

class QLabel;
class QLineEdit;
class QScrollArea;
class QPushButton;
class QRubberBand;
class QSpinBox;

namespace pdfhost::ui {
class ThumbnailBar;
}

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

    enum class Fit { kNone, kWidth, kPage };
    double Zoom() const { return zoom_; }
    // A zoom factor of its own (clamped to 10 % .. 800 %) ends fitting.
    void SetZoom(double zoom);
    void SetFit(Fit fit);

    // Shows the find bar with its text selected for typing.
    void StartFind();
    // Goes to the next (or previous) match of the find bar's text and selects it; false when
    // the document holds none.
    bool FindNext(bool forward);

    void SetThumbnailsShown(bool shown);
    ThumbnailBar& Thumbnails() const { return *thumbnails_; }

    // While the Redact tool is on, a drag over the page draws a Redact annotation.
    void SetRedactTool(bool on);
    bool RedactToolOn() const;
    // Covers the selected text with Redact annotations; gives how many were added.
    int RedactSelection();

  signals:
    void RedactToolToggled(bool on);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // The view model changed: repaint when needed, follow its scrolling.
    void OnViewChanged();
    void ApplyScroll();
    void UserScrolled();
    // The zoom that the fit mode asks for at the view's present size; the present zoom when
    // not fitting.
    double FittedZoom() const;
    void TellViewportSize();
    // Mouse events on the page while the Redact tool is on.
    bool RedactDrag(QEvent* event);
    // A rectangle of the shown page picture, in PDF space of the current page.
    std::optional<engine::Rect> PdfRectOf(const QRect& onPicture) const;

    HostDocument& document_;
    bool syncing_ = false;
    bool refreshQueued_ = false;
    TextSelection drawnSelection_;
    int page_ = 0;
    double zoom_ = 1.0;
    Fit fit_ = Fit::kWidth;
    QScrollArea* scroll_;
    QLabel* picture_;
    QSpinBox* pageNumber_;
    ThumbnailBar* thumbnails_;
    QPushButton* redactTool_;
    QPushButton* redactSelection_;
    QRubberBand* dragBand_;
    QPoint dragStart_;
    QWidget* findBar_;
    QLineEdit* findText_;
    QLabel* findStatus_;
    std::optional<FoundText> found_;
    QLabel* pageLabel_;
    QPushButton* previous_;
    QPushButton* next_;
};

}  // namespace pdfhost::ui
