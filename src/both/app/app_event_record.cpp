#include "app_event_record.h"

#include "app/brevan.h"

AppEventRecord::AppEventRecord(Brevan& app) {
    record_.setWord(kAppEventClientData, &app);
    record_.setWord(kAppEventPageAppearanceChanged,
                    reinterpret_cast<void*>(&OnPageAppearanceChanged));
    // Notifications the plug-in takes without acting on them.
    for (std::size_t word : {8, 9, 15, 16, 26}) {
        record_.setWord(word, reinterpret_cast<void*>(&Ignore));
    }
    app.host().HostAppRegisterAppEvents(&record_);
}

void AppEventRecord::OnPageAppearanceChanged(void* client) {
    static_cast<Brevan*>(client)->ReloadPanes(true);
}

void AppEventRecord::Ignore(void*) {}
