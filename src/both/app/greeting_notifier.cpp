#include "greeting_notifier.h"

#include "app/brevan.h"
#include "app/interface_strings.h"

namespace {

constexpr const wchar_t* kGreetingKey = L"Greeting";

}  // namespace

GreetingNotifier::GreetingNotifier(Brevan& app)
    : app_(app), source_(app.host().HostBubbleCreate()), text_(InterfaceString(ids::kGreetingTip)) {
    record_.setWord(kBubbleDeclaredSize, reinterpret_cast<void*>(kHostBubbleRecordSize));
    record_.setWord(kBubbleClientData, this);
    record_.setWord(kBubbleNotify, reinterpret_cast<void*>(&OnNotify));
    app_.host().HostBubbleRegister(source_, &record_);
}

GreetingNotifier::~GreetingNotifier() {
    app_.host().HostBubbleUnregister(source_, &record_);
}

void GreetingNotifier::OnNotify(void* client, int ready) {
    auto& self = *static_cast<GreetingNotifier*>(client);
    HostApi& host = self.app_.host();
    if (ready == 0 || host.HostPrefGetInt(Brevan::kPreferencesSection, kGreetingKey) != 0)
        return;
    host.HostBubbleShow(self.source_, self.app_.pluginId, 0, self.text_.c_str(),
                        kDisplayMilliseconds, kBubbleStyle, 0);
    host.HostPrefSetInt(Brevan::kPreferencesSection, kGreetingKey, 1);
}
