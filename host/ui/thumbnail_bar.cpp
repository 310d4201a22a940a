#include "ui/thumbnail_bar.h"

#include <QItemSelectionModel>

#include "ui/current_page_frame.h"
#include "ui/thumbnail_model.h"

namespace pdfhost::ui {

ThumbnailBar::ThumbnailBar(HostDocument& document, QWidget* parent)
    : QListView(parent), pages_(new ThumbnailModel(document, this)) {
    setObjectName(QStringLiteral("Thumbnails"));
    setModel(pages_);
    setItemDelegate(new CurrentPageFrame(this));
    setViewMode(QListView::IconMode);
    setFlow(QListView::TopToBottom);
    setWrapping(false);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    // Entries are laid out by one size that the model gives, so only those painted are ever
    // rendered.
    setUniformItemSizes(true);
    setSpacing(6);
    setIconSize(QSize(ThumbnailModel::kWidth, ThumbnailModel::kHeight));
    setFixedWidth(ThumbnailModel::kWidth + 40);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid() && !following_)
                    emit PageChosen(current.row());
            });
}

void ThumbnailBar::SetCurrent(int page) {
    pages_->SyncPages();
    const QModelIndex entry = pages_->index(page);
    if (!entry.isValid())
        return;
    following_ = true;
    selectionModel()->setCurrentIndex(entry, QItemSelectionModel::ClearAndSelect);
    following_ = false;
    scrollTo(entry);
}

}  // namespace pdfhost::ui
