// The task panes that plug-ins registered, each a dock in the main window it was registered for.
// Showing a pane the first time makes its dock and asks the plug-in for the pane's window; the
// plug-in hears when the pane goes from shown to hidden (the user closed it or the host hid it)
// and when the host takes the pane's window down again (its frame closes or the plug-in goes).
#pragma once

#include <QPointer>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host_abi.h"

class QMainWindow;
class QWidget;

namespace pdfhost {

class HostApp;

namespace ui {
class TaskPaneDock;
}

class TaskPanes {
  public:
    explicit TaskPanes(HostApp& app) : app_(app) {}
    ~TaskPanes();
    TaskPanes(const TaskPanes&) = delete;
    TaskPanes& operator=(const TaskPanes&) = delete;

    // Keeps a plug-in's pane record for `frame`. A record registered twice is kept once; one
    // without a name is refused.
    bool Register(HostPaneRecord* record, uint32_t pluginId, QMainWindow* frame);
    // Shows or hides the pane of this name in `frame` (else in the first frame that has one).
    // False when no pane has the name.
    bool Show(const std::string& name, bool show, QMainWindow* frame);
    bool IsShown(const std::string& name) const;
    // The dock of a pane, or null before it was first shown.
    ui::TaskPaneDock* DockOf(const std::string& name) const;

    // Takes the panes of a frame down (their windows first) and forgets them.
    void TearDownFrame(QMainWindow* frame);
    // Takes every pane down; the records stay known until their plug-in goes.
    void TearDownAll();
    // Forgets the records of a plug-in that went away.
    void RemovePlugin(uint32_t pluginId);

  private:
    struct Pane {
        HostPaneRecord* record = nullptr;
        uint32_t pluginId = 0;
        QMainWindow* frame = nullptr;
        std::string name;
        bool shown = false;
        bool hasWindow = false;
        QPointer<ui::TaskPaneDock> dock;
        QPointer<QWidget> window;
    };

    Pane* Find(const std::string& name, QMainWindow* frame);
    void MakeDock(Pane& pane);
    void FillDock(Pane& pane);
    void SetShown(Pane& pane, bool shown);
    void TearDown(Pane& pane);
    std::wstring TextOfWord(const Pane& pane, std::size_t word) const;

    HostApp& app_;
    // Owned one by one: callbacks into plug-ins may add panes while a pane is in use.
    std::vector<std::unique_ptr<Pane>> panes_;
};

}  // namespace pdfhost
