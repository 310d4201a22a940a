// The pages of a document as a list of thumbnails. A page's picture is rendered when a view
// first asks for it, which a list view does only for the entries it paints (every entry has the
// same size, given without a picture), so a long document costs no more than the thumbnails in
// sight; the pictures kept are bounded and drawn again after a change of the document.
#pragma once

#include <QAbstractListModel>
#include <QCache>
#include <QPixmap>
#include <cstdint>

namespace pdfhost {
class HostDocument;
}

namespace pdfhost::ui {

class ThumbnailModel : public QAbstractListModel {
    Q_OBJECT

  public:
    // The room of a page's picture; a page is drawn as large as fits.
    static constexpr int kWidth = 110;
    static constexpr int kHeight = kWidth * 3 / 2;
    // The most page pictures kept; the oldest goes when one more is drawn.
    static constexpr int kKeptPictures = 48;

    explicit ThumbnailModel(HostDocument& document, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // Follows a change of the page count: every entry anew, no picture kept.
    void SyncPages();
    // Whether the page's picture is kept, drawn at the document's present revision.
    bool IsDrawn(int page) const;
    int DrawnCount() const { return pictures_.count(); }

  private:
    QPixmap Picture(int page) const;

    HostDocument& document_;
    int pages_ = 0;
    mutable QCache<int, QPixmap> pictures_{kKeptPictures};
    // The document's revision that the kept pictures show; any change draws them anew.
    mutable std::uint64_t revision_ = 0;
};

}  // namespace pdfhost::ui
