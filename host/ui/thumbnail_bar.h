// The page thumbnails beside a document's view: one entry per page, drawn only when it comes
// into sight (a long document costs no more than the thumbnails on screen), the current page
// selected; a click goes to its page.
#pragma once

#include <QListWidget>

namespace pdfhost {
class HostDocument;
}

namespace pdfhost::ui {

class ThumbnailBar : public QListWidget {
    Q_OBJECT

  public:
    explicit ThumbnailBar(HostDocument& document, QWidget* parent = nullptr);

    void SetCurrent(int page);
    // Draws the page again when it is next in sight (after a change of the document).
    void Invalidate(int page);
    // Whether the page's thumbnail has been drawn.
    bool IsDrawn(int page) const;

  signals:
    void PageChosen(int page);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    // Makes an entry per page, none drawn, when the page count changed.
    void SyncPages();
    void DrawVisibleSoon();
    void DrawVisible();

    HostDocument& document_;
    bool drawQueued_ = false;
};

}  // namespace pdfhost::ui
