#include "greeting_notifier.h"

#include "app/interface_strings.h"
#include "config/plugin_sections.h"

namespace {

constexpr const wchar_t* kGreetingKey = L"Greeting";

}  // namespace

GreetingNotifier::GreetingNotifier(HostApi& host, const uint32_t& pluginId)
    : host_(host),
      pluginId_(pluginId),
      source_(host.HostBubbleCreate()),
      text_(InterfaceString(ids::kGreetingTip)) {
    record_.setWord(kBubbleDeclaredSize, reinterpret_cast<void*>(kHostBubbleRecordSize));
    record_.setWord(kBubbleClientData, this);
    record_.setWord(kBubbleNotify, HookWord<HostBubbleNotifyFn>(&OnNotify));
    host_.HostBubbleRegister(source_, &record_);
}

GreetingNotifier::~GreetingNotifier() {
    host_.HostBubbleUnregister(source_, &record_);
}

void BREVAN_HOSTCALL GreetingNotifier::OnNotify(void* client, int ready) {
    auto& self = *static_cast<GreetingNotifier*>(client);
    HostApi& host = self.host_;
    if (ready == 0 || host.HostPrefGetInt(kPluginPreferencesSection, kGreetingKey) != 0)
        return;
    host.HostBubbleShow(self.source_, self.pluginId_, 0, self.text_.c_str(), kDisplayMilliseconds,
                        kBubbleStyle, 0);
    host.HostPrefSetInt(kPluginPreferencesSection, kGreetingKey, 1);
}
