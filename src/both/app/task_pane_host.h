// TaskPaneHost: the plug-in's side of the task pane of one main window. It hands the host the
// pane record (name, title, caption and the callbacks that make, take down and close the pane's
// window) and owns the page dialog that fills the pane, made the first time the host shows the
// pane while the user asked for it.
#pragma once

#include <functional>
#include <map>
#include <memory>

#include "host/host_string.h"

class PageDialog;
class TaskPaneState;
struct CBrowser;

// What a task pane host uses of the plug-in.
struct TaskPaneParts {
    HostApi& host;
    // The user's choice of the pane.
    TaskPaneState& pane;
    // The host's browser table found at import, if any; the pane shows its title only with it.
    const std::unique_ptr<CBrowser>& browserExt;
    // The page dialog of each main window's pane, keyed by HostAppGetMainWindow's handle.
    std::map<HostWindow, PageDialog*>& dialogs;
    // Makes the page dialog that fills a pane, as a child of `parent`.
    std::function<std::unique_ptr<PageDialog>(HostWindow parent)> makeDialog;
};

class TaskPaneHost {
  public:
    // Registers the pane record with the host. `mainWindow` is the key of this pane in the
    // application's maps.
    TaskPaneHost(TaskPaneParts parts, HostWindow mainWindow);
    // Deletes the dialog, if the host has not taken it down.
    ~TaskPaneHost();
    TaskPaneHost(const TaskPaneHost&) = delete;
    TaskPaneHost& operator=(const TaskPaneHost&) = delete;

    const HostPaneRecord& record() const { return block_.record; }
    PageDialog* dialog() const { return dialog_.get(); }

  private:
    // The record goes first, so that the record handed to the callbacks leads to its host.
    struct RecordBlock {
        HostPaneRecord record;
        TaskPaneHost* owner;
    };
    static TaskPaneHost& OwnerOf(void* client);

    static const char* BREVAN_HOSTCALL GetPaneName(void* client);
    static HostWideString BREVAN_HOSTCALL GetPaneTitle(void* client);
    static HostWideString BREVAN_HOSTCALL GetPaneCaption(void* client);
    static HostWindow BREVAN_HOSTCALL CreatePaneWindow(void* client, HostWindow parent);
    static void BREVAN_HOSTCALL DestroyPaneWindow(void* client);
    static int BREVAN_HOSTCALL OnPaneClosed(void* client);

    void DeleteDialog();

    TaskPaneParts parts_;
    HostWindow mainWindow_;
    RecordBlock block_;
    HostWide title_;
    std::unique_ptr<PageDialog> dialog_;
};
