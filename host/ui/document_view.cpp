#include "ui/document_view.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPixmap>
#include <QPushButton>
#include <QRubberBand>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "annotation_editor.h"
#include "engine/page_space.h"
#include "host_app.h"
#include "host_document.h"
#include "ui/selection_painter.h"
#include "ui/thumbnail_bar.h"
#include "ui/thumbnail_model.h"
#include "user_redaction_mark.h"

namespace pdfhost::ui {
namespace {

// Pages are drawn at the device resolution of the view model, times the zoom.
constexpr float kViewDpi = DocView::kPixelsPerPoint * 72;
constexpr double kMinZoom = 0.1;
constexpr double kMaxZoom = 8.0;
constexpr double kZoomStep = 1.25;
// The renderer's own limit.
constexpr double kMaxDpi = 1200;
// A drag shorter than this either way is a click, not an area.
constexpr int kMinDrag = 3;

}  // namespace

DocumentView::DocumentView(HostDocument& document, QWidget* parent)
    : QWidget(parent),
      document_(document),
      scroll_(new QScrollArea(this)),
      picture_(new QLabel),
      pageNumber_(new QSpinBox(this)),
      thumbnails_(new ThumbnailBar(document, this)),
      redactTool_(new QPushButton(tr("Redact area"), this)),
      redactSelection_(new QPushButton(tr("Redact selection"), this)),
      dragBand_(new QRubberBand(QRubberBand::Rectangle, picture_)),
      findBar_(new QWidget(this)),
      findText_(new QLineEdit(findBar_)),
      findStatus_(new QLabel(findBar_)),
      pageLabel_(new QLabel(this)),
      previous_(new QPushButton(tr("Previous page"), this)),
      next_(new QPushButton(tr("Next page"), this)) {
    picture_->setObjectName(QStringLiteral("PagePicture"));
    picture_->setAlignment(Qt::AlignCenter);
    picture_->installEventFilter(this);
    scroll_->setWidget(picture_);
    scroll_->setWidgetResizable(true);
    scroll_->setAlignment(Qt::AlignCenter);

    pageNumber_->setObjectName(QStringLiteral("PageNumber"));
    pageNumber_->setKeyboardTracking(false);  // goes to the page on Enter, not at each digit
    auto* zoomOut = new QPushButton(tr("Zoom out"), this);
    auto* zoomIn = new QPushButton(tr("Zoom in"), this);
    auto* fitWidth = new QPushButton(tr("Fit width"), this);
    auto* fitPage = new QPushButton(tr("Fit page"), this);
    auto* bar = new QHBoxLayout;
    bar->addWidget(previous_);
    bar->addWidget(pageNumber_);
    bar->addWidget(pageLabel_);
    bar->addWidget(next_);
    bar->addStretch();
    redactTool_->setObjectName(QStringLiteral("RedactTool"));
    redactTool_->setCheckable(true);
    redactTool_->setToolTip(tr("Drag over the page to mark an area for redaction"));
    redactSelection_->setObjectName(QStringLiteral("RedactSelection"));
    redactSelection_->setToolTip(tr("Mark the selected text for redaction"));
    for (QPushButton* button :
         {redactTool_, redactSelection_, zoomOut, zoomIn, fitWidth, fitPage}) {
        button->setFocusPolicy(Qt::NoFocus);
        bar->addWidget(button);
    }
    findText_->setObjectName(QStringLiteral("FindText"));
    findText_->setPlaceholderText(tr("Find in document"));
    findText_->setClearButtonEnabled(true);
    auto* findPrevious = new QPushButton(tr("Previous"), findBar_);
    auto* findNext = new QPushButton(tr("Next"), findBar_);
    auto* findRow = new QHBoxLayout(findBar_);
    findRow->setContentsMargins(0, 0, 0, 0);
    findRow->addWidget(findText_, 1);
    findRow->addWidget(findPrevious);
    findRow->addWidget(findNext);
    findRow->addWidget(findStatus_);
    findBar_->hide();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(findBar_);
    auto* pages = new QHBoxLayout;
    pages->addWidget(thumbnails_);
    pages->addWidget(scroll_, 1);
    layout->addLayout(pages, 1);
    connect(thumbnails_, &ThumbnailBar::PageChosen, this, &DocumentView::ShowPage);
    connect(redactTool_, &QPushButton::toggled, this, &DocumentView::SetRedactTool);
    connect(redactSelection_, &QPushButton::clicked, this, [this] { RedactSelection(); });
    connect(findText_, &QLineEdit::textChanged, this, [this] { found_.reset(); });
    connect(findText_, &QLineEdit::returnPressed, this,
            [this] { FindNext(!(QApplication::keyboardModifiers() & Qt::ShiftModifier)); });
    connect(findPrevious, &QPushButton::clicked, this, [this] { FindNext(false); });
    connect(findNext, &QPushButton::clicked, this, [this] { FindNext(true); });
    const struct {
        QKeySequence keys;
        std::function<void()> run;
    } findKeys[] = {{QKeySequence::Find, [this] { StartFind(); }},
                    {QKeySequence::FindNext, [this] { FindNext(true); }},
                    {QKeySequence::FindPrevious, [this] { FindNext(false); }},
                    {QKeySequence(Qt::Key_Escape), [this] { findBar_->hide(); }}};
    for (const auto& key : findKeys) {
        auto* shortcut = new QShortcut(key.keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, key.run);
    }

    connect(previous_, &QPushButton::clicked, this, [this] { ShowPage(page_ - 1); });
    connect(next_, &QPushButton::clicked, this, [this] { ShowPage(page_ + 1); });
    connect(pageNumber_, &QSpinBox::valueChanged, this, [this](int number) {
        if (number - 1 != page_)
            ShowPage(number - 1);
    });
    connect(zoomOut, &QPushButton::clicked, this, [this] { SetZoom(zoom_ / kZoomStep); });
    connect(zoomIn, &QPushButton::clicked, this, [this] { SetZoom(zoom_ * kZoomStep); });
    connect(fitWidth, &QPushButton::clicked, this, [this] { SetFit(Fit::kWidth); });
    connect(fitPage, &QPushButton::clicked, this, [this] { SetFit(Fit::kPage); });
    for (const auto& zoom : {std::pair{QKeySequence::ZoomIn, kZoomStep},
                             std::pair{QKeySequence::ZoomOut, 1 / kZoomStep}}) {
        auto* shortcut = new QShortcut(zoom.first, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this,
                [this, step = zoom.second] { SetZoom(zoom_ * step); });
    }
    scroll_->viewport()->installEventFilter(this);
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
    scroll_->horizontalScrollBar()->setValue(static_cast<int>(view->Scroll().x * zoom_));
    scroll_->verticalScrollBar()->setValue(static_cast<int>(view->Scroll().y * zoom_));
    syncing_ = false;
}

void DocumentView::UserScrolled() {
    DocView* view = document_.View();
    if (syncing_ || view == nullptr)
        return;
    syncing_ = true;
    view->ScrollTo(static_cast<int>(scroll_->horizontalScrollBar()->value() / zoom_),
                   static_cast<int>(scroll_->verticalScrollBar()->value() / zoom_));
    syncing_ = false;
}

void DocumentView::TellViewportSize() {
    if (DocView* view = document_.View()) {
        view->SetViewportSize(static_cast<int>(scroll_->viewport()->width() / zoom_),
                              static_cast<int>(scroll_->viewport()->height() / zoom_));
    }
}

void DocumentView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const double fitted = FittedZoom();
    if (fitted != zoom_) {
        zoom_ = fitted;
        Refresh();
    }
    TellViewportSize();
}

void DocumentView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (const double fitted = FittedZoom(); fitted != zoom_) {
        zoom_ = fitted;
        TellViewportSize();
        Refresh();
    }
}

bool DocumentView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == picture_ && RedactToolOn())
        return RedactDrag(event) || QWidget::eventFilter(watched, event);
    if (watched == scroll_->viewport() && event->type() == QEvent::Wheel) {
        auto* wheel = static_cast<QWheelEvent*>(event);
        if (wheel->modifiers() & Qt::ControlModifier) {
            const int steps = wheel->angleDelta().y() / 120;
            if (steps != 0)
                SetZoom(zoom_ * std::pow(kZoomStep, steps));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

double DocumentView::FittedZoom() const {
    // A view not on screen has no size to fit yet.
    if (fit_ == Fit::kNone || !isVisible())
        return zoom_;
    engine::Rect box;
    try {
        box = document_.Engine().PageBox(page_);
    } catch (const std::exception&) {
        return zoom_;
    }
    // The room the page has, less a margin, over the page at 100 %.
    constexpr int kMargin = 8;
    const double width = (box.right - box.left) * DocView::kPixelsPerPoint;
    const double height = (box.top - box.bottom) * DocView::kPixelsPerPoint;
    if (width <= 0 || height <= 0)
        return zoom_;
    const double byWidth = (scroll_->viewport()->width() - kMargin) / width;
    const double byHeight = (scroll_->viewport()->height() - kMargin) / height;
    const double fitted = fit_ == Fit::kWidth ? byWidth : std::min(byWidth, byHeight);
    return std::clamp(fitted, kMinZoom, std::min(kMaxZoom, kMaxDpi / kViewDpi));
}

void DocumentView::StartFind() {
    findBar_->show();
    findText_->setFocus();
    findText_->selectAll();
}

bool DocumentView::FindNext(bool forward) {
    findBar_->show();
    const std::optional<engine::TextPattern> pattern = engine::TextPattern::Compile(
        engine::DecodeUtf8(findText_->text().toStdString()), engine::FindOptions{});
    if (!pattern) {
        findStatus_->clear();
        return false;
    }
    found_ = FindInDocument(document_, *pattern, found_, page_, forward);
    if (!found_) {
        findStatus_->setText(tr("No match"));
        return false;
    }
    findStatus_->setText(tr("Page %1").arg(found_->page + 1));
    const engine::TextMatch match = found_->match;
    if (DocView* view = document_.View())
        view->SelectRanges({{found_->page, match.first, match.first + match.count - 1}});
    ShowPage(found_->page);
    // Brings the match into sight.
    try {
        const auto boxes = document_.TextCache()
                               .Get(document_.Engine(), found_->page)
                               ->LineBoxes(match.first, match.count);
        if (const DocView* view = document_.View(); view != nullptr && !boxes.empty()) {
            const DevicePoint corner =
                view->PageToDevice(found_->page, boxes.front().left, boxes.front().top);
            scroll_->ensureVisible(static_cast<int>(corner.x * zoom_),
                                   static_cast<int>(corner.y * zoom_), 60, 60);
        }
    } catch (const std::exception&) {
        // the page showed; only the scroll to the match is lost
    }
    return true;
}

void DocumentView::SetZoom(double zoom) {
    fit_ = Fit::kNone;
    zoom_ = std::clamp(zoom, kMinZoom, std::min(kMaxZoom, kMaxDpi / kViewDpi));
    TellViewportSize();
    Refresh();
}

void DocumentView::SetFit(Fit fit) {
    fit_ = fit;
    zoom_ = FittedZoom();
    TellViewportSize();
    Refresh();
}

void DocumentView::ShowPage(int page) {
    const int count = document_.Engine().PageCount();
    page_ = std::clamp(page, 0, std::max(0, count - 1));
    if (DocView* view = document_.View(); view != nullptr && view->CurrentPage() != page_) {
        syncing_ = true;
        view->GotoPage(page_);
        syncing_ = false;
    }
    if (const double fitted = FittedZoom(); fitted != zoom_) {  // pages may differ in size
        zoom_ = fitted;
        TellViewportSize();
    }
    Refresh();
}

void DocumentView::Refresh() {
    const int count = document_.Engine().PageCount();
    {
        const QSignalBlocker blocker(pageNumber_);
        pageNumber_->setRange(1, std::max(1, count));
        pageNumber_->setValue(page_ + 1);
    }
    pageLabel_->setText(tr("of %1").arg(count));
    previous_->setEnabled(page_ > 0);
    thumbnails_->SetCurrent(page_);
    thumbnails_->viewport()->update();  // pictures of an older revision are drawn anew
    redactSelection_->setEnabled(document_.View() != nullptr &&
                                 !document_.View()->Selection().Empty());
    next_->setEnabled(page_ + 1 < count);
    try {
        const engine::RgbImage image =
            document_.Engine().Render(page_, static_cast<float>(kViewDpi * zoom_));
        const QImage view(image.pixels.data(), image.width, image.height, image.stride,
                          QImage::Format_RGB888);
        QImage shown = view.copy();
        if (const DocView* model = document_.View()) {
            drawnSelection_ = model->Selection();
            PaintSelection(shown, document_, page_, zoom_);
        }
        picture_->setPixmap(QPixmap::fromImage(shown));
        ApplyScroll();
    } catch (const std::exception& error) {
        picture_->setText(QString::fromStdString(error.what()));
    }
}

void DocumentView::SetThumbnailsShown(bool shown) {
    thumbnails_->setVisible(shown);
}

void DocumentView::SetRedactTool(bool on) {
    if (redactTool_->isChecked() != on)
        redactTool_->setChecked(on);  // comes back here through the button's signal
    picture_->setCursor(on ? Qt::CrossCursor : Qt::ArrowCursor);
    dragBand_->hide();
    emit RedactToolToggled(on);
}

bool DocumentView::RedactToolOn() const {
    return redactTool_->isChecked();
}

int DocumentView::RedactSelection() {
    HostApp* app = HostApp::Current();
    return app != nullptr ? pdfhost::RedactSelection(*app, document_) : 0;
}

bool DocumentView::RedactDrag(QEvent* event) {
    const auto type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
        type != QEvent::MouseButtonRelease)
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const QPoint at = mouse->position().toPoint();
    if (type == QEvent::MouseButtonPress) {
        if (mouse->button() != Qt::LeftButton)
            return false;
        dragStart_ = at;
        dragBand_->setGeometry(QRect(at, QSize()));
        dragBand_->show();
        return true;
    }
    if (!dragBand_->isVisible())
        return false;
    const QRect dragged(QPoint(std::min(dragStart_.x(), at.x()), std::min(dragStart_.y(), at.y())),
                        QPoint(std::max(dragStart_.x(), at.x()), std::max(dragStart_.y(), at.y())));
    if (type == QEvent::MouseMove) {
        dragBand_->setGeometry(dragged);
        return true;
    }
    dragBand_->hide();
    HostApp* app = HostApp::Current();
    if (app == nullptr || dragged.width() < kMinDrag || dragged.height() < kMinDrag)
        return true;
    if (const std::optional<engine::Rect> area = PdfRectOf(dragged))
        AddUserRedaction(*app, document_, page_, {*area});
    return true;
}

std::optional<engine::Rect> DocumentView::PdfRectOf(const QRect& onPicture) const {
    const QSize shown = picture_->pixmap().size();
    if (shown.isEmpty())
        return std::nullopt;
    // The picture stands centred in its label; the part of the drag off the page is dropped.
    const QPoint origin((picture_->width() - shown.width()) / 2,
                        (picture_->height() - shown.height()) / 2);
    const QRect onPage = onPicture.translated(-origin).intersected(QRect(QPoint(), shown));
    if (onPage.isEmpty())
        return std::nullopt;
    const double perPoint = zoom_ * DocView::kPixelsPerPoint;
    const engine::Rect inShown{static_cast<float>(onPage.left() / perPoint),
                               static_cast<float>(onPage.top() / perPoint),
                               static_cast<float>((onPage.right() + 1) / perPoint),
                               static_cast<float>((onPage.bottom() + 1) / perPoint)};
    try {
        return engine::PageSpace::Of(document_.Engine(), page_).ToPdf(inShown);
    } catch (const std::exception&) {
        return std::nullopt;
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
