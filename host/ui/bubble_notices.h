// The host's notification surface: plug-ins make a source, register records on it, and show
// short notices. Once the host is up it tells every registered record that the surface is ready;
// on the desktop a notice is a tooltip-like popup near the main window's lower right corner that
// goes after its display time. Headless, nothing is shown; the last notice is kept for tests.
#pragma once

#include <QPointer>
#include <cstdint>
#include <string>
#include <vector>

#include "handle_pool.h"
#include "host_abi.h"

class QLabel;
class QWidget;

namespace pdfhost {

class BubbleNotices {
  public:
    struct Notice {
        std::wstring text;
        int milliseconds = 0;
        int style = 0;
    };

    explicit BubbleNotices(bool headless) : headless_(headless) {}
    ~BubbleNotices();
    BubbleNotices(const BubbleNotices&) = delete;
    BubbleNotices& operator=(const BubbleNotices&) = delete;

    HostBubbleSource MakeSource(uint32_t pluginId);
    void Register(HostBubbleSource source, HostBubbleRecord* record);
    void Unregister(HostBubbleSource source, HostBubbleRecord* record);
    // Shows a notice of a known source over `anchor` (may be null); false for an unknown source.
    bool Show(HostBubbleSource source, const std::wstring& text, int milliseconds, int style,
              QWidget* anchor);

    // Tells every registered record that has not heard it yet that the surface is ready.
    void SurfaceReady();
    // Drops the sources of a plug-in that went away, with their records.
    void RemovePlugin(uint32_t pluginId);

    const std::vector<Notice>& Shown() const { return shown_; }

  private:
    struct Registered {
        HostBubbleRecord* record = nullptr;
        bool told = false;
    };
    struct Source {
        uint32_t pluginId = 0;
        std::vector<Registered> records;
    };

    void Popup(const Notice& notice, QWidget* anchor);

    bool headless_;
    HandlePool<HostBubbleSource, Source> sources_;
    std::vector<Notice> shown_;
    QPointer<QLabel> popup_;
};

}  // namespace pdfhost
