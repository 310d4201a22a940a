#include "progress_bar_host.h"

#include <limits>
#include <utility>

#include "redaction/redaction_strings.h"

namespace {

// The platform's timers take periods up to the largest int; a longer silence makes no
// difference to a user.
unsigned PeriodOf(uint64_t seconds) {
    constexpr uint64_t kLongest = std::numeric_limits<int>::max();
    return static_cast<unsigned>(seconds >= kLongest / 1000 ? kLongest : seconds * 1000);
}

}  // namespace

ProgressBarHost::ProgressBarHost(HostApi& host, PlatformServices& platform)
    : host_(host), platform_(platform) {}

ProgressBarHost::~ProgressBarHost() {
    close();
}

bool ProgressBarHost::Open(const std::wstring& text) {
    progress_ = host_.HostProgressNew(host_.HostAppGetMainWindow(), 0);
    if (progress_ == nullptr)
        return false;
    host_.HostProgressSetRange(progress_, 0, 100);
    host_.HostProgressSetText(progress_, text.c_str());
    return true;
}

void ProgressBarHost::showTimed(const std::wstring& title, uint64_t seconds) {
    if (shown() || !Open(title))
        return;
    timeoutMs_ = PeriodOf(seconds);
    StartWatchdog();
    activity = false;
}

void ProgressBarHost::showFixed(int kind) {
    if (shown())
        return;
    const int text = kind == kDownloadBar ? ids::kDownloadingFile : ids::kUploadingFile;
    if (!Open(ResourceString(text)))
        return;
    timerId_ = 0;
    timeoutMs_ = 0;
    activity = false;
}

void ProgressBarHost::update(int percent, const std::wstring& text) {
    if (!shown())
        return;
    if (!text.empty())
        host_.HostProgressSetText(progress_, text.c_str());
    host_.HostProgressSetPos(progress_, percent);
    host_.HostProgressPump(progress_);
    if (timerId_ != 0) {
        StopWatchdog();
        StartWatchdog();
    }
}

void ProgressBarHost::close() {
    if (HostProgress taken = std::exchange(progress_, nullptr))
        host_.HostProgressDestroy(taken);
    StopWatchdog();
    timeoutMs_ = 0;
}

void ProgressBarHost::StartWatchdog() {
    timerId_ = platform_.StartTimer(timeoutMs_, [this] { OnTick(); });
}

void ProgressBarHost::StopWatchdog() {
    if (timerId_ != 0)
        platform_.KillTimer(std::exchange(timerId_, 0));
}

void ProgressBarHost::OnTick() {
    StopWatchdog();
    if (activity) {
        activity = false;
        StartWatchdog();
    } else {
        close();
    }
}
