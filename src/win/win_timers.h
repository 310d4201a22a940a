// Repeating timers of the thread's message loop. The system's timer procedure takes no context,
// so the functions wait in a table by timer id, which only the user-interface thread touches.
#pragma once

#include <functional>
#include <set>

class WinTimers {
  public:
    WinTimers() = default;
    // Kills the timers it started.
    ~WinTimers();
    WinTimers(const WinTimers&) = delete;
    WinTimers& operator=(const WinTimers&) = delete;

    // The timer's id, 0 when the system refused one.
    unsigned Start(unsigned periodMs, std::function<void()> tick);
    // Does nothing for an id it did not start.
    void Kill(unsigned id);

  private:
    std::set<unsigned> started_;
};
