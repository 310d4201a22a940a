#include "document/download_status.h"

#include <cstdint>

#include "document/progress_bar_host.h"

namespace {

constexpr int kBeginDownload = 4;
constexpr int kDownloadingData = 5;
constexpr int kEndDownload = 6;

}  // namespace

void DownloadStatus::OnProgress(unsigned long progress, unsigned long maximum, int status) {
    if (bar_ == nullptr ||
        (status != kBeginDownload && status != kDownloadingData && status != kEndDownload)) {
        return;
    }
    if (status == kBeginDownload)
        bar_->showFixed(ProgressBarHost::kDownloadBar);
    // The share is worked out on the 32-bit counts the platform's binding callbacks carry.
    const auto received = static_cast<uint32_t>(progress);
    const auto total = static_cast<uint32_t>(maximum);
    if (total != 0)
        bar_->update(static_cast<int>(received * 100u / total), L"");
    if (status == kEndDownload)
        bar_->close();
}
