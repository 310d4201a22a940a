#include "app_event_record.h"

#include <utility>

AppEventRecord::AppEventRecord(HostApi& host, std::function<void()> rebuildPages)
    : rebuildPages_(std::move(rebuildPages)) {
    record_.setWord(kAppEventClientData, this);
    record_.setWord(kAppEventPageAppearanceChanged,
                    HookWord<HostAppHook>(&OnPageAppearanceChanged));
    // Notifications the plug-in takes without acting on them.
    for (std::size_t word : {8, 9, 15, 16, 26}) {
        record_.setWord(word, HookWord<HostAppHook>(&Ignore));
    }
    host.HostAppRegisterAppEvents(&record_);
}

void BREVAN_HOSTCALL AppEventRecord::OnPageAppearanceChanged(void* client) {
    static_cast<AppEventRecord*>(client)->rebuildPages_();
}

void BREVAN_HOSTCALL AppEventRecord::Ignore(void*) {}
