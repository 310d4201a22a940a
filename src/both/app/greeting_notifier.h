// The one-time tip for a new user: once the host's notification surface is ready it shows how to
// start, on the host's bubble, unless the preference "Greeting" says it was shown before.
#pragma once

#include <cstdint>
#include <string>

#include "host/host_api.h"

class GreetingNotifier {
  public:
    static constexpr int kDisplayMilliseconds = 10000;
    static constexpr int kBubbleStyle = 2;

    // Registers with a new notification source of the host. The tip goes out under the plug-in's
    // id as it is when the surface is ready.
    GreetingNotifier(HostApi& host, const uint32_t& pluginId);
    // Unregisters.
    ~GreetingNotifier();
    GreetingNotifier(const GreetingNotifier&) = delete;
    GreetingNotifier& operator=(const GreetingNotifier&) = delete;

    const HostBubbleRecord& record() const { return record_; }

  private:
    static void BREVAN_HOSTCALL OnNotify(void* client, int ready);

    HostApi& host_;
    const uint32_t& pluginId_;
    HostBubbleSource source_;
    HostBubbleRecord record_;
    std::wstring text_;
};
