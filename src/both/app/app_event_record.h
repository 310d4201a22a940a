// AppEventRecord: the application callbacks the plug-in registers with the host.
#pragma once

#include <functional>

#include "host/host_api.h"

class AppEventRecord {
  public:
    // Registers with the host; the host offers no way to unregister. `rebuildPages` runs when the
    // page's appearance changed.
    AppEventRecord(HostApi& host, std::function<void()> rebuildPages);
    AppEventRecord(const AppEventRecord&) = delete;
    AppEventRecord& operator=(const AppEventRecord&) = delete;

    const HostAppEventRecord& record() const { return record_; }

  private:
    // The page's address holds the interface language and the accent colour: build it anew.
    static void BREVAN_HOSTCALL OnPageAppearanceChanged(void* client);
    static void BREVAN_HOSTCALL Ignore(void* client);

    std::function<void()> rebuildPages_;
    HostAppEventRecord record_;
};
