// The page thumbnails beside a document's view: one entry per page, its picture drawn when it
// comes into sight, the current page selected and framed; a click goes to its page.
#pragma once

#include <QListView>

namespace pdfhost {
class HostDocument;
}

namespace pdfhost::ui {

class ThumbnailModel;

class ThumbnailBar : public QListView {
    Q_OBJECT

  public:
    explicit ThumbnailBar(HostDocument& document, QWidget* parent = nullptr);

    ThumbnailModel& Pages() const { return *pages_; }
    // Selects the page's entry and brings it into sight.
    void SetCurrent(int page);

  signals:
    void PageChosen(int page);

  private:
    ThumbnailModel* pages_;
    // Set while the bar follows the view's page, which is no choice of the user's.
    bool following_ = false;
};

}  // namespace pdfhost::ui
