#include "ui/ribbon_widget.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QVariant>

#include "host_app.h"

// The images live in the host's static library; its resources are registered on first use.
static void InitRibbonImages() {
    Q_INIT_RESOURCE(ribbon_images);
}

namespace {

// Rich texts of the ribbon keep "&&" for a literal "&"; tooltips show it once.
QString TooltipText(const std::wstring& tooltip, const std::wstring& keyTip) {
    QString text = QString::fromStdWString(tooltip).replace("&&", "&");
    if (!keyTip.empty())
        text += QString(" (%1)").arg(QString::fromStdWString(keyTip));
    return text;
}

// Why an entry that its plug-in disabled cannot be pressed now. The host's entries change their
// state only with the documents, so the documents say what the user can do about it.
QString DisabledReason(bool documentOpen) {
    return documentOpen
               ? QObject::tr(
                     "Unavailable while a document is open: close the open documents "
                     "first.")
               : QObject::tr("Unavailable without an open document: open a PDF file first.");
}

constexpr const char* kHandleProperty = "ribbonHandle";
// How long the press's status message stays once the entry's work is done.
constexpr int kPressMessageMs = 2000;
// One frame of a 60 Hz display: the status message is painted and flushed before the work.
constexpr int kPressPaintMs = 16;

}  // namespace

namespace pdfhost::ui {

RibbonWidget::RibbonWidget(HostApp& app, HostFrame frame, QWidget* parent)
    : QTabWidget(parent), app_(app), frame_(frame) {
    setObjectName("pdfhost.ribbon");
    setDocumentMode(true);
    listener_ = app_.Ribbons().AddListener([this](uintptr_t bar) {
        if (bar == app_.Ribbons().ExistingBarOf(frame_))
            Rebuild();
    });
    app_.AddObserver(this);
    app_.Ribbons().BarOf(frame_);
    Rebuild();
}

RibbonWidget::~RibbonWidget() {
    app_.RemoveObserver(this);
    app_.Ribbons().RemoveListener(listener_);
}

QIcon RibbonWidget::ImageNamed(const std::wstring& name) {
    static const bool loaded = (InitRibbonImages(), true);
    (void)loaded;
    const QString path = ":/ribbon/" + QString::fromStdWString(name) + ".png";
    return QFile::exists(path) ? QIcon(path) : QIcon();
}

void RibbonWidget::Rebuild() {
    const int current = currentIndex();
    // A press may have led here: the pages go once the press is over, and are out of the tree
    // at once.
    while (count() > 0) {
        QWidget* page = widget(0);
        removeTab(0);
        page->hide();
        page->setParent(nullptr);
        page->deleteLater();
    }
    const uintptr_t bar = app_.Ribbons().ExistingBarOf(frame_);
    for (const RibbonNode* category : app_.Ribbons().Children(bar))
        addTab(MakeCategoryPage(category->handle), QString::fromStdWString(category->title));
    if (current >= 0 && current < count())
        setCurrentIndex(current);
    RefreshStates();
}

QWidget* RibbonWidget::MakeCategoryPage(uintptr_t category) {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(4, 2, 4, 2);
    for (const RibbonNode* panel : app_.Ribbons().Children(category)) {
        auto* group = new QGroupBox(QString::fromStdWString(panel->title));
        auto* buttons = new QHBoxLayout(group);
        for (const RibbonNode* element : app_.Ribbons().Children(panel->handle))
            buttons->addWidget(MakeButton(*element));
        buttons->addStretch();
        row->addWidget(group);
    }
    row->addStretch();
    return page;
}

QToolButton* RibbonWidget::MakeButton(const RibbonNode& element) {
    auto* button = new QToolButton;
    button->setObjectName(QString::fromStdWString(element.name));
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setIconSize(QSize(32, 32));
    QAction* action = MakeAction(element, button);
    action->setIcon(ImageNamed(element.largeImage));
    button->setDefaultAction(action);
    if (element.elementType == RibbonModel::kDropDownElement) {
        auto* menu = new QMenu(button);
        menu->setToolTipsVisible(true);  // a disabled entry's tooltip says why
        for (const RibbonNode* entry : app_.Ribbons().Children(element.handle))
            menu->addAction(MakeAction(*entry, menu));
        connect(menu, &QMenu::aboutToShow, this, &RibbonWidget::RefreshStates);
        button->setMenu(menu);
        button->setPopupMode(QToolButton::InstantPopup);
    }
    return button;
}

QAction* RibbonWidget::MakeAction(const RibbonNode& node, QObject* parent) {
    auto* action = new QAction(QString::fromStdWString(node.title), parent);
    action->setObjectName(QString::fromStdWString(node.name));
    action->setToolTip(TooltipText(node.tooltip, node.keyTip));
    action->setIcon(ImageNamed(node.smallImage));
    action->setProperty(kHandleProperty, QVariant::fromValue<qulonglong>(node.handle));
    if (node.execute != nullptr) {
        const uintptr_t handle = node.handle;
        const QString title = QString::fromStdWString(node.title).remove(QLatin1Char('&'));
        connect(action, &QAction::triggered, this,
                [this, handle, title] { PressWithFeedback(handle, title); });
    }
    return action;
}

void RibbonWidget::RefreshStates() {
    for (QAction* action : findChildren<QAction*>()) {
        const QVariant handle = action->property(kHandleProperty);
        if (!handle.isValid())
            continue;
        const RibbonNode* node = app_.Ribbons().FindButton(handle.value<qulonglong>());
        // A drop-down element stays usable: its menu shows which entries are.
        if (node == nullptr || node->kind != RibbonKind::kEntry)
            continue;
        const bool enabled = app_.Ribbons().IsEnabled(*node);
        action->setEnabled(enabled);
        QString tooltip = TooltipText(node->tooltip, node->keyTip);
        if (!enabled)
            tooltip += QLatin1Char('\n') + DisabledReason(app_.Documents().Active() != nullptr);
        action->setToolTip(tooltip);
    }
}

void RibbonWidget::PressWithFeedback(uintptr_t handle, const QString& title) {
    // The entry's work may hold the event loop for seconds (a page to load, a dialog to build):
    // the press shows first, and the work starts a display frame later, once the window system
    // has the status message on screen.
    auto* window = qobject_cast<QMainWindow*>(this->window());
    QPointer<QStatusBar> status = window != nullptr ? window->statusBar() : nullptr;
    const QString message = tr("Opening %1…").arg(title);
    if (status != nullptr)
        status->showMessage(message);
    QApplication::setOverrideCursor(Qt::BusyCursor);
    QTimer::singleShot(
        kPressPaintMs, qApp, [self = QPointer<RibbonWidget>(this), handle, status, message] {
            // Busy until the event loop runs again: at the end of the work, or as soon as it shows
            // a dialog of its own.
            QTimer::singleShot(0, qApp, [] { QApplication::restoreOverrideCursor(); });
            if (self != nullptr)
                self->app_.Ribbons().Press(handle);
            if (status != nullptr && status->currentMessage() == message)
                status->showMessage(message, kPressMessageMs);
        });
}

}  // namespace pdfhost::ui
