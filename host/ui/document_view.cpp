#include "ui/document_view.h"

#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "annotation_editor.h"
#include "host_app.h"
#include "host_document.h"
#include "ui/selection_painter.h"

namespace pdfhost::ui {
namespace {

// Pages are drawn at the device resolution of the view model.
constexpr float kViewDpi = DocView::kPixelsPerPoint * 72;

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
    if (DocView* view = document_.View()) {
        view->SetListener([this] { OnViewChanged(); });
        connect(scroll_->horizontalScrollBar(), &QScrollBar::valueChanged, this,
                &DocumentView::UserScrolled);
        connect(scroll_->verticalScrollBar(), &QScrollBar::valueChanged, this,
                &DocumentView::UserScrolled);
    }
    auto* undo = new QShortcut(QKeySequence::Undo, this);
    connect(undo, &QShortcut::activated, this, [this] {
        if (HostApp* app = HostApp::Current())
            AnnotationEditor(*app).UndoLast(document_);
    });
    ShowPage(0);
}

DocumentView::~DocumentView() {
    HostApp* app = HostApp::Current();
    if (app == nullptr)
        return;
    for (const auto& open : app->Documents().All()) {
        if (open.get() == &document_ && document_.View() != nullptr)
            document_.View()->SetListener(nullptr);
    }
}

void DocumentView::OnViewChanged() {
    if (syncing_)
        return;
    DocView* view = document_.View();
    const bool repaint = view->CurrentPage() != page_ || !view->TakeInvalidated().empty() ||
                         !(view->Selection() == drawnSelection_);
    if (repaint && !refreshQueued_) {
        refreshQueued_ = true;
        QTimer::singleShot(0, this, [this] {
            refreshQueued_ = false;
            ShowPage(document_.View()->CurrentPage());
        });
    }
    ApplyScroll();
}

void DocumentView::ApplyScroll() {
    const DocView* view = document_.View();
    if (view == nullptr)
        return;
    syncing_ = true;
    scroll_->horizontalScrollBar()->setValue(view->Scroll().x);
    scroll_->verticalScrollBar()->setValue(view->Scroll().y);
    syncing_ = false;
}

void DocumentView::UserScrolled() {
    DocView* view = document_.View();
    if (syncing_ || view == nullptr)
        return;
    syncing_ = true;
    view->ScrollTo(scroll_->horizontalScrollBar()->value(), scroll_->verticalScrollBar()->value());
    syncing_ = false;
}

void DocumentView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (DocView* view = document_.View())
        view->SetViewportSize(scroll_->viewport()->width(), scroll_->viewport()->height());
}

void DocumentView::ShowPage(int page) {
    const int count = document_.Engine().PageCount();
    page_ = std::clamp(page, 0, std::max(0, count - 1));
    if (DocView* view = document_.View(); view != nullptr && view->CurrentPage() != page_) {
        syncing_ = true;
        view->GotoPage(page_);
        syncing_ = false;
    }
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
        QImage shown = view.copy();
        if (const DocView* model = document_.View()) {
            drawnSelection_ = model->Selection();
            PaintSelection(shown, document_, page_);
        }
        picture_->setPixmap(QPixmap::fromImage(shown));
        ApplyScroll();
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
