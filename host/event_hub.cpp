#include "event_hub.h"

#include <algorithm>

#include "plugin_call.h"
#include "record_hooks.h"

namespace pdfhost {

void EventHub::AddDocRecord(HostDocEventRecord* record, uint32_t pluginId) {
    if (record == nullptr || IsRegistered(record))
        return;
    docRecords_.push_back({record, pluginId});
}

void EventHub::RemoveDocRecord(HostDocEventRecord* record) {
    std::erase_if(docRecords_, [&](const auto& entry) { return entry.record == record; });
}

void EventHub::AddAppRecord(HostAppEventRecord* record, uint32_t pluginId) {
    if (record == nullptr)
        return;
    const bool known = std::any_of(appRecords_.begin(), appRecords_.end(),
                                   [&](const auto& entry) { return entry.record == record; });
    if (!known)
        appRecords_.push_back({record, pluginId});
}

void EventHub::RemovePlugin(uint32_t pluginId) {
    std::erase_if(docRecords_, [&](const auto& entry) { return entry.pluginId == pluginId; });
    std::erase_if(appRecords_, [&](const auto& entry) { return entry.pluginId == pluginId; });
}

bool EventHub::IsRegistered(const HostDocEventRecord* record) const {
    return std::any_of(docRecords_.begin(), docRecords_.end(),
                       [&](const auto& entry) { return entry.record == record; });
}

template <typename Hook, typename... Args>
void EventHub::FireDoc(std::size_t word, Args... args) {
    const std::vector<Entry<HostDocEventRecord>> snapshot = docRecords_;
    for (const auto& entry : snapshot) {
        if (!IsRegistered(entry.record))
            continue;
        void* hook = HookAt(*entry.record, word);
        if (hook == nullptr)
            continue;
        CallPluginVoid("document hook", reinterpret_cast<Hook>(hook),
                       entry.record->word(kDocEventClientData), args...);
    }
}

void EventHub::WillOpen() {
    FireDoc<HostDocHookNoDoc>(kDocEventWillOpen);
}
void EventHub::DidOpen(HostDoc doc) {
    FireDoc<HostDocHook>(kDocEventDidOpen, doc);
}
void EventHub::Activate(HostDoc doc) {
    FireDoc<HostDocHook>(kDocEventActivate, doc);
}
void EventHub::DidSave(HostDoc doc, int result) {
    FireDoc<HostDocSaveHook>(kDocEventDidSave, doc, result);
}
void EventHub::Closing(HostDoc doc) {
    FireDoc<HostDocHook>(kDocEventClosing, doc);
}
void EventHub::Modified(HostDoc doc) {
    FireDoc<HostDocHook>(kDocEventModified, doc);
}
void EventHub::OtherTab() {
    FireDoc<HostDocHookNoDoc>(kDocEventOtherTab);
}
void EventHub::FieldChanged(HostDoc doc, NdxFormField field) {
    FireDoc<HostDocFieldHook>(kDocEventFieldChanged, doc, field);
}

}  // namespace pdfhost
