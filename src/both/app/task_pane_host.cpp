#include "task_pane_host.h"

#include <type_traits>

#include "app/brevan.h"
#include "app/interface_strings.h"
#include "bridge/page_dialog.h"
#include "host/extension_tables.h"

namespace {

template <typename Fn>
void* AsWord(Fn fn) {
    return reinterpret_cast<void*>(fn);
}

}  // namespace

TaskPaneHost::TaskPaneHost(Brevan& app, HostWindow mainWindow)
    : app_(app),
      mainWindow_(mainWindow),
      block_{HostPaneRecord{}, this},
      title_(app.host(), InterfaceString(ids::kSableMark)) {
    static_assert(std::is_standard_layout_v<RecordBlock>);
    HostPaneRecord& record = block_.record;
    record.setWord(kPaneClientData, &record);
    record.setWord(kPaneGetName, AsWord(&GetPaneName));
    record.setWord(kPaneGetTitle, AsWord(&GetPaneTitle));
    record.setWord(kPaneGetCaption, AsWord(&GetPaneCaption));
    record.setWord(kPaneCreateWindow, AsWord(&CreatePaneWindow));
    record.setWord(kPaneDestroyWindow, AsWord(&DestroyPaneWindow));
    record.setWord(kPaneClosed, AsWord(&OnPaneClosed));
    app_.host().HostAppRegisterPane(&record);
}

TaskPaneHost::~TaskPaneHost() {
    DeleteDialog();
}

TaskPaneHost& TaskPaneHost::OwnerOf(void* client) {
    return *reinterpret_cast<RecordBlock*>(static_cast<HostPaneRecord*>(client))->owner;
}

const char* TaskPaneHost::GetPaneName(void*) {
    return Brevan::kTaskPaneName;
}

// The title shows once the user opened the pane, on a host that lends its browser table.
HostWideString TaskPaneHost::GetPaneTitle(void* client) {
    TaskPaneHost& self = OwnerOf(client);
    if (!self.app_.pane.shown() || !self.app_.browserExt || self.app_.browserExt->table == nullptr)
        return nullptr;
    return self.title_.get();
}

HostWideString TaskPaneHost::GetPaneCaption(void* client) {
    return OwnerOf(client).app_.pane.shown() ? GetPaneTitle(client) : nullptr;
}

HostWindow TaskPaneHost::CreatePaneWindow(void* client, HostWindow parent) {
    TaskPaneHost& self = OwnerOf(client);
    Brevan& app = self.app_;
    if (!app.pane.shown())
        return nullptr;
    if (!self.dialog_ && parent != nullptr) {
        self.dialog_ = app.platform().MakeTaskPaneDialog(app, parent);
        if (self.dialog_) {
            app.paneDialogs[self.mainWindow_] = self.dialog_.get();
            self.dialog_->Reload(false);
            self.dialog_->Show();
        }
    }
    return self.dialog_ ? self.dialog_->Window() : nullptr;
}

void TaskPaneHost::DestroyPaneWindow(void* client) {
    OwnerOf(client).DeleteDialog();
}

// The pane went from shown to hidden. While the plug-in hides it itself, that was not the user's
// doing and is left alone.
int TaskPaneHost::OnPaneClosed(void* client) {
    OwnerOf(client).app_.pane.OnClosed();
    return 1;
}

void TaskPaneHost::DeleteDialog() {
    if (!dialog_)
        return;
    const auto entry = app_.paneDialogs.find(mainWindow_);
    if (entry != app_.paneDialogs.end() && entry->second == dialog_.get())
        app_.paneDialogs.erase(entry);
    dialog_.reset();
}
