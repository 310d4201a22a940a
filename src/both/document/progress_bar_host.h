// ProgressBarHost: the plug-in's one progress window for work the page drives from afar. A bar the
// page makes carries a watchdog that takes it down after a silence of the bridge; the bar of a
// file transfer stays until it is closed.
#pragma once

#include <cstdint>
#include <string>

#include "app/platform_services.h"
#include "host/host_api.h"

class ProgressBarHost {
  public:
    // Kinds of showFixed.
    static constexpr int kUploadBar = 0;
    static constexpr int kDownloadBar = 1;

    ProgressBarHost(HostApi& host, PlatformServices& platform);
    // Takes a bar that is still up down.
    ~ProgressBarHost();
    ProgressBarHost(const ProgressBarHost&) = delete;
    ProgressBarHost& operator=(const ProgressBarHost&) = delete;

    // A bar with `title` that goes by itself one to two periods of `seconds` after the last
    // bridge command. Nothing happens while a bar is up.
    void showTimed(const std::wstring& title, uint64_t seconds);
    // The bar of an upload (kUploadBar) or a download (kDownloadBar), without watchdog. Nothing
    // happens while a bar is up.
    void showFixed(int kind);
    // Moves the bar to `percent`; a non-empty `text` replaces its text. A running watchdog starts
    // its period again.
    void update(int percent, const std::wstring& text);
    // Takes the bar down; nothing happens without one.
    void close();

    bool shown() const { return progress_ != nullptr; }

    // Raised by the dispatch of every bridge command: the page is alive. Cleared at each tick.
    bool activity = false;

  private:
    // Makes the window with `text`; false when the host gives none.
    bool Open(const std::wstring& text);
    void StartWatchdog();
    void StopWatchdog();
    void OnTick();

    HostApi& host_;
    PlatformServices& platform_;
    HostProgress progress_ = nullptr;
    unsigned timerId_ = 0;
    unsigned timeoutMs_ = 0;
};
