// Repeating timers on the user-interface thread, known by a non-zero id like the platform's
// window-less timers.
#pragma once

#include <QTimer>
#include <functional>
#include <map>
#include <memory>

class QtTimers {
  public:
    unsigned Start(unsigned periodMs, std::function<void()> tick);
    void Kill(unsigned id);

  private:
    std::map<unsigned, std::unique_ptr<QTimer>> timers_;
    unsigned lastId_ = 0;
};
