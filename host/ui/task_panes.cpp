#include "ui/task_panes.h"

#include <QMainWindow>
#include <algorithm>

#include "host_app.h"
#include "record_hooks.h"
#include "ui/task_pane_dock.h"
#include "wide_text.h"

namespace pdfhost {

TaskPanes::~TaskPanes() {
    // Docks still standing belong to their frames; the plug-ins' windows in them were taken
    // down with TearDownAll before the plug-ins went.
    for (const auto& pane : panes_)
        delete pane->dock.data();
}

bool TaskPanes::Register(HostPaneRecord* record, uint32_t pluginId, QMainWindow* frame) {
    if (record == nullptr || frame == nullptr)
        return false;
    if (std::any_of(panes_.begin(), panes_.end(),
                    [&](const auto& pane) { return pane->record == record; })) {
        return true;
    }
    const auto getName = reinterpret_cast<HostPaneNameFn>(HookAt(*record, kPaneGetName));
    const char* name = getName != nullptr ? getName(record->word(kPaneClientData)) : nullptr;
    if (name == nullptr || *name == '\0')
        return false;
    auto pane = std::make_unique<Pane>();
    pane->record = record;
    pane->pluginId = pluginId;
    pane->frame = frame;
    pane->name = name;
    panes_.push_back(std::move(pane));
    return true;
}

TaskPanes::Pane* TaskPanes::Find(const std::string& name, QMainWindow* frame) {
    Pane* any = nullptr;
    for (const auto& pane : panes_) {
        if (pane->name != name)
            continue;
        if (pane->frame == frame)
            return pane.get();
        if (any == nullptr)
            any = pane.get();
    }
    return any;
}

bool TaskPanes::Show(const std::string& name, bool show, QMainWindow* frame) {
    Pane* pane = Find(name, frame);
    if (pane == nullptr)
        return false;
    if (show) {
        MakeDock(*pane);
        FillDock(*pane);
    }
    SetShown(*pane, show);
    return true;
}

bool TaskPanes::IsShown(const std::string& name) const {
    return std::any_of(panes_.begin(), panes_.end(),
                       [&](const auto& pane) { return pane->name == name && pane->shown; });
}

ui::TaskPaneDock* TaskPanes::DockOf(const std::string& name) const {
    for (const auto& pane : panes_) {
        if (pane->name == name && pane->dock)
            return pane->dock.data();
    }
    return nullptr;
}

void TaskPanes::MakeDock(Pane& pane) {
    if (pane.dock)
        return;
    auto* dock = new ui::TaskPaneDock(QString::fromStdString(pane.name), pane.frame);
    pane.dock = dock;
    const HostPaneRecord* record = pane.record;
    dock->SetOnUserClose([this, record] {
        for (const auto& candidate : panes_) {
            if (candidate->record == record) {
                SetShown(*candidate, false);
                return;
            }
        }
    });
    pane.frame->addDockWidget(Qt::RightDockWidgetArea, dock);
}

// Asks the plug-in for the pane's window until it gives one, and titles the dock.
void TaskPanes::FillDock(Pane& pane) {
    std::wstring title = TextOfWord(pane, kPaneGetCaption);
    if (title.empty())
        title = TextOfWord(pane, kPaneGetTitle);
    pane.dock->setWindowTitle(QString::fromStdWString(title));
    if (pane.window)
        return;
    const auto create = reinterpret_cast<HostPaneCreateFn>(HookAt(*pane.record, kPaneCreateWindow));
    if (create == nullptr)
        return;
    const HostWindow made =
        create(pane.record->word(kPaneClientData),
               reinterpret_cast<HostWindow>(static_cast<QWidget*>(pane.dock.data())));
    // The callback may have hidden or removed the pane.
    if (made == nullptr || !pane.dock)
        return;
    pane.window = reinterpret_cast<QWidget*>(made);
    pane.hasWindow = true;
    pane.dock->setWidget(pane.window);
}

void TaskPanes::SetShown(Pane& pane, bool shown) {
    if (pane.dock)
        pane.dock->setVisible(shown);
    const bool wasShown = pane.shown;
    pane.shown = shown;
    app_.SetPaneShown(pane.name, IsShown(pane.name));
    if (!wasShown || shown)
        return;
    const HostPaneRecord* record = pane.record;
    if (const auto closed = reinterpret_cast<HostPaneClosedFn>(HookAt(*record, kPaneClosed)))
        closed(record->word(kPaneClientData));
}

void TaskPanes::TearDown(Pane& pane) {
    if (pane.hasWindow) {
        pane.hasWindow = false;
        if (const auto destroy =
                reinterpret_cast<HostPaneDestroyFn>(HookAt(*pane.record, kPaneDestroyWindow))) {
            destroy(pane.record->word(kPaneClientData));
        }
    }
    // What the plug-in left in the dock goes with it.
    delete pane.dock.data();
    pane.shown = false;
    app_.SetPaneShown(pane.name, IsShown(pane.name));
}

void TaskPanes::TearDownFrame(QMainWindow* frame) {
    std::vector<Pane*> ofFrame;
    for (const auto& pane : panes_) {
        if (pane->frame == frame)
            ofFrame.push_back(pane.get());
    }
    for (Pane* pane : ofFrame)
        TearDown(*pane);
    std::erase_if(panes_, [&](const auto& pane) { return pane->frame == frame; });
}

void TaskPanes::TearDownAll() {
    std::vector<Pane*> all;
    for (const auto& pane : panes_)
        all.push_back(pane.get());
    for (Pane* pane : all)
        TearDown(*pane);
}

void TaskPanes::RemovePlugin(uint32_t pluginId) {
    std::vector<std::string> names;
    for (const auto& pane : panes_) {
        if (pane->pluginId == pluginId) {
            delete pane->dock.data();
            names.push_back(pane->name);
        }
    }
    std::erase_if(panes_, [&](const auto& pane) { return pane->pluginId == pluginId; });
    for (const std::string& name : names)
        app_.SetPaneShown(name, IsShown(name));
}

std::wstring TaskPanes::TextOfWord(const Pane& pane, std::size_t word) const {
    const auto get = reinterpret_cast<HostPaneTextFn>(HookAt(*pane.record, word));
    if (get == nullptr)
        return {};
    const HostWideString text = get(pane.record->word(kPaneClientData));
    const WideStringValue* value = app_.Values().wideStrings.Find(text);
    return value != nullptr ? value->text : std::wstring();
}

}  // namespace pdfhost
