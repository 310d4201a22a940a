// The desktop face of a main window's ribbon: a tab per category, a titled group per panel, a
// tool button per element; a drop-down element lists its entries in a menu. It is rebuilt when
// the ribbon changes, and the entries' enable procedures are asked again whenever the documents
// change and before a menu opens; a disabled entry's tooltip says why. A press shows at once in
// the status bar and the cursor.
#pragma once

#include <QTabWidget>
#include <cstdint>

#include "document_observer.h"
#include "host_abi.h"

class QAction;
class QMenu;
class QToolButton;

namespace pdfhost {
class HostApp;
struct RibbonNode;
}  // namespace pdfhost

namespace pdfhost::ui {

class RibbonWidget : public QTabWidget, public DocumentObserver {
    Q_OBJECT

  public:
    RibbonWidget(HostApp& app, HostFrame frame, QWidget* parent = nullptr);
    ~RibbonWidget() override;

    // The image of a name given to HostRibbonSetImages; null when the host has none of that name.
    static QIcon ImageNamed(const std::wstring& name);

    void DocumentAdded(HostDocument&) override { RefreshStates(); }
    void DocumentRemoving(HostDocument&) override { RefreshStates(); }
    void ActiveChanged(HostDocument*) override { RefreshStates(); }
    void DocumentChanged(HostDocument&) override {}

  private:
    void Rebuild();
    QWidget* MakeCategoryPage(uintptr_t category);
    QToolButton* MakeButton(const RibbonNode& element);
    QAction* MakeAction(const RibbonNode& entry, QObject* parent);
    // Enable states and tooltips; a disabled entry's tooltip says why.
    void RefreshStates();
    // Shows at once that the entry was pressed (a status message, the busy cursor) and presses
    // it once that has reached the screen.
    void PressWithFeedback(uintptr_t handle, const QString& title);

    HostApp& app_;
    HostFrame frame_;
    int listener_ = 0;
};

}  // namespace pdfhost::ui
