#include "ui/main_window.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

#include "close_prompt.h"
#include "host_app.h"
#include "save_command.h"
#include "ui/account_menu.h"
#include "ui/document_view.h"
#include "ui/ribbon_widget.h"

namespace pdfhost::ui {

MainWindow::MainWindow(HostApp& app, QWidget* parent)
    : QMainWindow(parent), app_(app), tabs_(new QTabWidget(this)) {
    setWindowTitle("pdfhost");
    resize(1000, 800);
    tabs_->setTabsClosable(true);
    auto* start = new QLabel(tr("Open a PDF file with File > Open."));
    start->setAlignment(Qt::AlignCenter);
    tabs_->addTab(start, tr("Start"));
    // The start tab cannot be closed.
    tabs_->tabBar()->setTabButton(0, QTabBar::RightSide, nullptr);
    setCentralWidget(tabs_);
    BuildMenus();
    QToolBar* ribbon = addToolBar(tr("Ribbon"));
    ribbon->setMovable(false);
    ribbon->addWidget(new RibbonWidget(app_, HostApp::FrameHandle(*this)));

    connect(tabs_, &QTabWidget::currentChanged, this, &MainWindow::OnTabChanged);
    connect(tabs_, &QTabWidget::tabCloseRequested, this, &MainWindow::OnTabCloseRequested);
    app_.AddObserver(this);
    app_.AddFrame(*this);
}

MainWindow::~MainWindow() {
    app_.RemoveFrame(*this);
    app_.RemoveObserver(this);
}

void MainWindow::BuildMenus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open..."), QKeySequence::Open, this, [this] {
        const QString path =
            QFileDialog::getOpenFileName(this, tr("Open"), {}, tr("PDF files (*.pdf)"));
        if (!path.isEmpty())
            OpenFile(path);
    });
    file->addAction(tr("&Save"), QKeySequence::Save, this, [this] {
        HostDocument* document = CurrentDocument();
        if (document == nullptr || !ConfirmSaveWithMarks(app_, *document))
            return;
        // A new document asks for a file; a cancelled dialog is no failure to report.
        const bool asks = document->IsTemporary();
        const QString title = TitleOf(*document);
        if (SaveActiveDocument(app_, this) == 0 && !asks)
            QMessageBox::warning(this, tr("Save"), tr("%1 could not be saved.").arg(title));
    });
    file->addAction(tr("&Close"), QKeySequence::Close, this, [this] {
        if (HostDocument* document = CurrentDocument())
            CloseAsked(*document);
    });
    file->addSeparator();
    file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);

    QMenu* view = menuBar()->addMenu(tr("&View"));
    thumbnailsShown_ = view->addAction(tr("Page &Thumbnails"));
    thumbnailsShown_->setCheckable(true);
    thumbnailsShown_->setChecked(true);
    connect(thumbnailsShown_, &QAction::toggled, this, [this](bool shown) {
        for (int index = 0; index < tabs_->count(); ++index) {
            if (DocumentView* documentView = ViewAt(index))
                documentView->SetThumbnailsShown(shown);
        }
    });

    QMenu* tools = menuBar()->addMenu(tr("&Tools"));
    redactArea_ = tools->addAction(tr("&Redact Area"));
    redactArea_->setCheckable(true);
    connect(redactArea_, &QAction::triggered, this, [this](bool on) {
        if (DocumentView* documentView = ViewAt(tabs_->currentIndex()))
            documentView->SetRedactTool(on);
        else
            redactArea_->setChecked(false);
    });
    tools->addAction(tr("Redact &Selected Text"), this, [this] {
        DocumentView* documentView = ViewAt(tabs_->currentIndex());
        if (documentView == nullptr || documentView->RedactSelection() == 0)
            statusBar()->showMessage(tr("Select text first: Find selects what it finds."), 4000);
    });
    AddAccountMenu(app_, *this);
}

void MainWindow::OpenFile(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    std::string password;
    HostApp::OpenResult result = app_.OpenDocument(path.toStdString());
    for (bool wrong = false; result.document == nullptr && result.needsPassword; wrong = true) {
        const std::optional<QString> typed = AskPassword(name, wrong);
        if (!typed)
            return;  // the user chose not to open it
        result = app_.OpenDocument(path.toStdString(), typed->toStdString());
    }
    if (result.document == nullptr) {
        QMessageBox::warning(this, tr("Open"), QString::fromStdString(result.error));
        return;
    }
    if (result.document->Engine().WasRepaired()) {
        statusBar()->showMessage(tr("%1 was damaged and has been repaired: some pages may be "
                                    "blank or incomplete. Check them before you rely on it.")
                                     .arg(name));
    }
}

std::optional<QString> MainWindow::AskPassword(const QString& name, bool wrong) {
    QInputDialog dialog(this);
    dialog.setObjectName(QStringLiteral("PasswordDialog"));
    dialog.setWindowTitle(tr("Password"));
    dialog.setLabelText(wrong ? tr("The password is not right. Enter the password of %1:").arg(name)
                              : tr("%1 is protected. Enter its password:").arg(name));
    dialog.setTextEchoMode(QLineEdit::Password);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

void MainWindow::DocumentAdded(HostDocument& document) {
    const QSignalBlocker blocker(tabs_);
    auto* view = new DocumentView(document);
    view->SetThumbnailsShown(thumbnailsShown_->isChecked());
    connect(view, &DocumentView::RedactToolToggled, this, [this, view](bool on) {
        if (ViewAt(tabs_->currentIndex()) == view)
            redactArea_->setChecked(on);
    });
    tabs_->addTab(view, TitleOf(document));
}

void MainWindow::DocumentRemoving(HostDocument& document) {
    const int index = IndexOf(document);
    if (index < 0)
        return;
    const QSignalBlocker blocker(tabs_);
    QWidget* view = tabs_->widget(index);
    tabs_->removeTab(index);
    delete view;
}

void MainWindow::ActiveChanged(HostDocument* active) {
    const QSignalBlocker blocker(tabs_);
    const int index = active != nullptr ? IndexOf(*active) : 0;
    if (index >= 0)
        tabs_->setCurrentIndex(index);
    redactArea_->setChecked(ViewAt(index) != nullptr && ViewAt(index)->RedactToolOn());
}

void MainWindow::DocumentChanged(HostDocument& document) {
    const int index = IndexOf(document);
    if (index < 0)
        return;
    tabs_->setTabText(index, TitleOf(document));
    ViewAt(index)->Refresh();
}

void MainWindow::OnTabChanged(int index) {
    redactArea_->setChecked(ViewAt(index) != nullptr && ViewAt(index)->RedactToolOn());
    if (DocumentView* view = ViewAt(index)) {
        app_.Activate(view->Document());
    } else if (index == 0) {
        app_.ActivateOtherTab();
    }
}

void MainWindow::OnTabCloseRequested(int index) {
    if (DocumentView* view = ViewAt(index))
        CloseAsked(view->Document());
}

bool MainWindow::CloseAsked(HostDocument& document) {
    const int number = document.Number();
    if (!ConfirmClose(app_, document, this, true))
        return false;
    // The prompt's event loop may have closed it already.
    if (HostDocument* still = app_.Documents().FindByNumber(number))
        app_.CloseDocument(*still);
    return true;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // Each modified document is shown and asked about in turn; Cancel on any keeps the window and
    // every document open. The documents close with the host once the window has gone.
    std::vector<int> modified;
    for (const HostDocument* document : app_.Documents().Tabs()) {
        if (document->IsModified())
            modified.push_back(document->Number());
    }
    for (const int number : modified) {
        HostDocument* document = app_.Documents().FindByNumber(number);
        if (document == nullptr)
            continue;
        if (const int index = IndexOf(*document); index >= 0)
            tabs_->setCurrentIndex(index);
        if (!ConfirmClose(app_, *document, this, true)) {
            event->ignore();
            return;
        }
    }
    event->accept();
}

DocumentView* MainWindow::ViewAt(int index) const {
    return qobject_cast<DocumentView*>(tabs_->widget(index));
}

int MainWindow::IndexOf(const HostDocument& document) const {
    for (int index = 0; index < tabs_->count(); ++index) {
        if (const DocumentView* view = ViewAt(index);
            view != nullptr && &view->Document() == &document) {
            return index;
        }
    }
    return -1;
}

HostDocument* MainWindow::CurrentDocument() const {
    DocumentView* view = ViewAt(tabs_->currentIndex());
    return view != nullptr ? &view->Document() : nullptr;
}

QString MainWindow::TitleOf(const HostDocument& document) {
    QString title = QString::fromStdString(document.FileName());
    if (document.IsModified())
        title += " *";
    return title;
}

}  // namespace pdfhost::ui
