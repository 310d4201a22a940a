#include "ui/thumbnail_bar.h"

#include <QImage>
#include <QPixmap>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <algorithm>

#include "host_document.h"

namespace pdfhost::ui {
namespace {

constexpr int kThumbWidth = 110;
constexpr int kDrawnRole = Qt::UserRole + 1;

}  // namespace

ThumbnailBar::ThumbnailBar(HostDocument& document, QWidget* parent)
    : QListWidget(parent), document_(document) {
    setObjectName(QStringLiteral("Thumbnails"));
    setViewMode(QListView::IconMode);
    setFlow(QListView::TopToBottom);
    setWrapping(false);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setIconSize(QSize(kThumbWidth, kThumbWidth * 11 / 8));
    setFixedWidth(kThumbWidth + 40);
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            emit PageChosen(row);
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ThumbnailBar::DrawVisibleSoon);
    SyncPages();
}

void ThumbnailBar::SyncPages() {
    const int pages = document_.Engine().PageCount();
    if (count() == pages)
        return;
    const QSignalBlocker blocker(this);
    clear();
    for (int page = 0; page < pages; ++page)
        addItem(new QListWidgetItem(QString::number(page + 1)));
    DrawVisibleSoon();
}

void ThumbnailBar::SetCurrent(int page) {
    SyncPages();
    const QSignalBlocker blocker(this);
    setCurrentRow(page);
    if (QListWidgetItem* current = item(page))
        scrollToItem(current);
    DrawVisibleSoon();
}

void ThumbnailBar::Invalidate(int page) {
    SyncPages();
    if (QListWidgetItem* entry = item(page))
        entry->setData(kDrawnRole, false);
    DrawVisibleSoon();
}

bool ThumbnailBar::IsDrawn(int page) const {
    const QListWidgetItem* entry = item(page);
    return entry != nullptr && entry->data(kDrawnRole).toBool();
}

void ThumbnailBar::resizeEvent(QResizeEvent* event) {
    QListWidget::resizeEvent(event);
    DrawVisibleSoon();
}

void ThumbnailBar::showEvent(QShowEvent* event) {
    QListWidget::showEvent(event);
    DrawVisibleSoon();
}

void ThumbnailBar::DrawVisibleSoon() {
    if (drawQueued_)
        return;
    drawQueued_ = true;
    QTimer::singleShot(0, this, [this] {
        drawQueued_ = false;
        DrawVisible();
    });
}

void ThumbnailBar::DrawVisible() {
    if (!isVisible())
        return;
    const QRect sight = viewport()->rect();
    const int first = std::max(0, indexAt(QPoint(sight.center().x(), sight.top() + 1)).row());
    for (int page = first; page < count(); ++page) {
        QListWidgetItem* entry = item(page);
        if (!visualItemRect(entry).intersects(sight))
            break;  // past the last one in sight
        if (entry->data(kDrawnRole).toBool())
            continue;
        try {
            const engine::Rect box = document_.Engine().PageBox(page);
            const float width = std::max(1.0f, box.right - box.left);
            const engine::RgbImage image =
                document_.Engine().Render(page, 72.0f * kThumbWidth / width);
            const QImage picture(image.pixels.data(), image.width, image.height, image.stride,
                                 QImage::Format_RGB888);
            entry->setIcon(QIcon(QPixmap::fromImage(picture.copy())));
        } catch (const std::exception&) {
            // a page the engine cannot draw keeps its number only
        }
        entry->setData(kDrawnRole, true);
    }
}

}  // namespace pdfhost::ui
