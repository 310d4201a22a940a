#include "task_pane_host.h"

#include <type_traits>
#include <utility>

#include "app/interface_strings.h"
#include "app/task_pane_state.h"
#include "bridge/page_dialog.h"
#include "host/extension_tables.h"

TaskPaneHost::TaskPaneHost(TaskPaneParts parts, HostWindow mainWindow)
    : parts_(std::move(parts)),
      mainWindow_(mainWindow),
      block_{HostPaneRecord{}, this},
      title_(parts_.host, InterfaceString(ids::kSableMark)) {
    static_assert(std::is_standard_layout_v<RecordBlock>);
    HostPaneRecord& record = block_.record;
    record.setWord(kPaneClientData, &record);
    record.setWord(kPaneGetName, HookWord<HostPaneNameFn>(&GetPaneName));
    record.setWord(kPaneGetTitle, HookWord<HostPaneTextFn>(&GetPaneTitle));
    record.setWord(kPaneGetCaption, HookWord<HostPaneTextFn>(&GetPaneCaption));
    record.setWord(kPaneCreateWindow, HookWord<HostPaneCreateFn>(&CreatePaneWindow));
    record.setWord(kPaneDestroyWindow, HookWord<HostPaneDestroyFn>(&DestroyPaneWindow));
    record.setWord(kPaneClosed, HookWord<HostPaneClosedFn>(&OnPaneClosed));
    parts_.host.HostAppRegisterPane(&record);
}

TaskPaneHost::~TaskPaneHost() {
    DeleteDialog();
}

TaskPaneHost& TaskPaneHost::OwnerOf(void* client) {
    return *reinterpret_cast<RecordBlock*>(static_cast<HostPaneRecord*>(client))->owner;
}

const char* BREVAN_HOSTCALL TaskPaneHost::GetPaneName(void*) {
    return kTaskPaneName;
}

// The title shows once the user opened the pane, on a host that lends its browser table.
HostWideString BREVAN_HOSTCALL TaskPaneHost::GetPaneTitle(void* client) {
    TaskPaneHost& self = OwnerOf(client);
    const TaskPaneParts& parts = self.parts_;
    if (!parts.pane.shown() || !parts.browserExt || parts.browserExt->table == nullptr)
        return nullptr;
    return self.title_.get();
}

HostWideString BREVAN_HOSTCALL TaskPaneHost::GetPaneCaption(void* client) {
    return OwnerOf(client).parts_.pane.shown() ? GetPaneTitle(client) : nullptr;
}

HostWindow BREVAN_HOSTCALL TaskPaneHost::CreatePaneWindow(void* client, HostWindow parent) {
    TaskPaneHost& self = OwnerOf(client);
    const TaskPaneParts& parts = self.parts_;
    if (!parts.pane.shown())
        return nullptr;
    if (!self.dialog_ && parent != nullptr) {
        self.dialog_ = parts.makeDialog(parent);
        if (self.dialog_) {
            parts.dialogs[self.mainWindow_] = self.dialog_.get();
            self.dialog_->Reload(false);
            self.dialog_->Show();
        }
    }
    return self.dialog_ ? self.dialog_->Window() : nullptr;
}

void BREVAN_HOSTCALL TaskPaneHost::DestroyPaneWindow(void* client) {
    OwnerOf(client).DeleteDialog();
}

// The pane went from shown to hidden. While the plug-in hides it itself, that was not the user's
// doing and is left alone.
int BREVAN_HOSTCALL TaskPaneHost::OnPaneClosed(void* client) {
    OwnerOf(client).parts_.pane.OnClosed();
    return 1;
}

void TaskPaneHost::DeleteDialog() {
    if (!dialog_)
        return;
    const auto entry = parts_.dialogs.find(mainWindow_);
    if (entry != parts_.dialogs.end() && entry->second == dialog_.get())
        parts_.dialogs.erase(entry);
    dialog_.reset();
}
