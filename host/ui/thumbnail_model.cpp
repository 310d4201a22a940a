#include "ui/thumbnail_model.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QSize>
#include <algorithm>

#include "host_document.h"

namespace pdfhost::ui {

ThumbnailModel::ThumbnailModel(HostDocument& document, QObject* parent)
    : QAbstractListModel(parent), document_(document), pages_(document.Engine().PageCount()) {}

int ThumbnailModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : pages_;
}

QVariant ThumbnailModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= pages_)
        return {};
    switch (role) {
        case Qt::DisplayRole:
            return QString::number(index.row() + 1);
        case Qt::ToolTipRole:
            return tr("Page %1").arg(index.row() + 1);
        case Qt::DecorationRole: {
            // The current page is shown by its selected entry; its picture stays as it is.
            const QPixmap picture = Picture(index.row());
            QIcon icon(picture);
            icon.addPixmap(picture, QIcon::Selected);
            return icon;
        }
        case Qt::SizeHintRole:
            // The picture's room and a line for the page number below it.
            return QSize(kWidth + 12, kHeight + 28);
        default:
            return {};
    }
}

void ThumbnailModel::SyncPages() {
    const int pages = document_.Engine().PageCount();
    if (pages == pages_)
        return;
    beginResetModel();
    pages_ = pages;
    pictures_.clear();
    endResetModel();
}

bool ThumbnailModel::IsDrawn(int page) const {
    return revision_ == document_.Engine().Revision() && pictures_.contains(page);
}

QPixmap ThumbnailModel::Picture(int page) const {
    if (const std::uint64_t now = document_.Engine().Revision(); now != revision_) {
        pictures_.clear();
        revision_ = now;
    }
    if (const QPixmap* kept = pictures_.object(page))
        return *kept;
    QPixmap picture;
    try {
        const engine::Rect box = document_.Engine().PageBox(page);
        const float scale = std::min(kWidth / std::max(1.0f, box.right - box.left),
                                     kHeight / std::max(1.0f, box.top - box.bottom));
        const engine::RgbImage image = document_.Engine().Render(page, 72.0f * scale);
        picture = QPixmap::fromImage(QImage(image.pixels.data(), image.width, image.height,
                                            image.stride, QImage::Format_RGB888)
                                         .copy());
    } catch (const std::exception&) {
        // A page the engine cannot draw shows as a grey sheet with its number.
        picture = QPixmap(kWidth, kHeight);
        picture.fill(QColor(Qt::lightGray));
    }
    pictures_.insert(page, new QPixmap(picture));
    return picture;
}

}  // namespace pdfhost::ui
