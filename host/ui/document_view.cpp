#include "ui/document_view.h"

#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "host_document.h"

namespace pdfhost::ui {
namespace {

constexpr float kViewDpi = 96;

}  // namespace

DocumentView::DocumentView(HostDocument& document, QWidget* parent)
    : QWidget(parent),
      document_(document),
      scroll_(new QScrollArea(this)),
      picture_(new QLabel),
      pageLabel_(new QLabel(this)),
      previous_(new QPushButton(tr("Previous page"), this)),
      next_(new QPushButton(tr("Next page"), this)) {
    picture_->setAlignment(Qt::AlignCenter);
    scroll_->setWidget(picture_);
    scroll_->setWidgetResizable(true);
    scroll_->setAlignment(Qt::AlignCenter);

    auto* bar = new QHBoxLayout;
    bar->addWidget(previous_);
    bar->addWidget(pageLabel_);
    bar->addWidget(next_);
    bar->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(scroll_);

    connect(previous_, &QPushButton::clicked, this, [this] { ShowPage(page_ - 1); });
    connect(next_, &QPushButton::clicked, this, [this] { ShowPage(page_ + 1); });
    setFocusPolicy(Qt::StrongFocus);
    ShowPage(0);
}

void DocumentView::ShowPage(int page) {
    const int count = document_.Engine().PageCount();
    page_ = std::clamp(page, 0, std::max(0, count - 1));
    Refresh();
}

void DocumentView::Refresh() {
    const int count = document_.Engine().PageCount();
    pageLabel_->setText(tr("Page %1 of %2").arg(page_ + 1).arg(count));
    previous_->setEnabled(page_ > 0);
    next_->setEnabled(page_ + 1 < count);
    try {
        const engine::RgbImage image = document_.Engine().Render(page_, kViewDpi);
        const QImage view(image.pixels.data(), image.width, image.height, image.stride,
                          QImage::Format_RGB888);
        picture_->setPixmap(QPixmap::fromImage(view.copy()));
    } catch (const std::exception& error) {
        picture_->setText(QString::fromStdString(error.what()));
    }
}

void DocumentView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_PageDown) {
        ShowPage(page_ + 1);
    } else if (event->key() == Qt::Key_PageUp) {
        ShowPage(page_ - 1);
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace pdfhost::ui
