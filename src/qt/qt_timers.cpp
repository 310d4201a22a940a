#include "qt_timers.h"

unsigned QtTimers::Start(unsigned periodMs, std::function<void()> tick) {
    do {
        ++lastId_;
    } while (lastId_ == 0 || timers_.count(lastId_) != 0);
    auto timer = std::make_unique<QTimer>();
    // A period of 0 would fire on every pass of the event loop; the platform's minimum is 10 ms.
    timer->setInterval(std::max(periodMs, 10u));
    QObject::connect(timer.get(), &QTimer::timeout, std::move(tick));
    timer->start();
    timers_[lastId_] = std::move(timer);
    return lastId_;
}

void QtTimers::Kill(unsigned id) {
    const auto found = timers_.find(id);
    if (found == timers_.end())
        return;
    // A tick may kill its own timer: let Qt delete it once the signal has returned.
    found->second->stop();
    found->second.release()->deleteLater();
    timers_.erase(found);
}
