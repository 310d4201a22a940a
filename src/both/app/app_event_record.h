// AppEventRecord: the application callbacks the plug-in registers with the host.
#pragma once

#include "host/host_abi.h"

class Brevan;

class AppEventRecord {
  public:
    // Registers with the host; the host offers no way to unregister.
    explicit AppEventRecord(Brevan& app);
    AppEventRecord(const AppEventRecord&) = delete;
    AppEventRecord& operator=(const AppEventRecord&) = delete;

    const HostAppEventRecord& record() const { return record_; }

  private:
    // The page's address holds the interface language and the accent colour: build it anew.
    static void OnPageAppearanceChanged(void* client);
    static void Ignore(void* client);

    HostAppEventRecord record_;
};
