#include "win_timers.h"

#include <windows.h>

#include <map>

namespace {

std::map<UINT_PTR, std::function<void()>>& Ticks() {
    static std::map<UINT_PTR, std::function<void()>> ticks;
    return ticks;
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR id, DWORD) {
    const auto it = Ticks().find(id);
    if (it == Ticks().end())
        return;
    // A copy: the tick may kill its own timer.
    const std::function<void()> tick = it->second;
    tick();
}

}  // namespace

WinTimers::~WinTimers() {
    for (const unsigned id : started_) {
        ::KillTimer(nullptr, id);
        Ticks().erase(id);
    }
}

unsigned WinTimers::Start(unsigned periodMs, std::function<void()> tick) {
    const UINT_PTR id = SetTimer(nullptr, 0, periodMs, &OnTimer);
    if (id == 0)
        return 0;
    Ticks()[id] = std::move(tick);
    started_.insert(static_cast<unsigned>(id));
    return static_cast<unsigned>(id);
}

void WinTimers::Kill(unsigned id) {
    if (started_.erase(id) == 0)
        return;
    ::KillTimer(nullptr, id);
    Ticks().erase(id);
}
