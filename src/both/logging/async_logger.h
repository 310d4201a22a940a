// The process-wide logger: callers queue finished lines, a worker thread of its own appends them
// to dated files under a base folder, so that no command waits for the disk.
//
// Until Start, calls are filtered by level and queued (only the newest kPendingLimit lines, and
// no more than kPendingBytesLimit bytes of them beside the newest line, are kept); Start writes
// them. After Discard nothing is queued until Start. Files are "<base>/<YYYY>/<MM>/<DD>.txt" by
// local date; a file that reached the size limit is continued in "<DD>_1.txt", "<DD>_2.txt" ...,
// and the rotated name is kept for the rest of the day.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <ctime>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "log_format.h"
#include "log_level.h"

class AsyncLogger {
  public:
    static constexpr std::size_t kPendingLimit = 4096;
    static constexpr std::size_t kPendingBytesLimit = 1u << 20;

    // The one logger of the process, made at first use with the defaults.
    static AsyncLogger& Instance();

    AsyncLogger();
    // Writes what is queued and joins the worker (except when run on the worker itself).
    ~AsyncLogger();
    AsyncLogger(const AsyncLogger&) = delete;
    AsyncLogger& operator=(const AsyncLogger&) = delete;

    // Stores the settings and starts the worker. A running worker is stopped first.
    // `basePath` is UTF-8; `retentionDays` is kept for old-file pruning, which is not done.
    void Start(std::string basePath, int retentionDays, int level, int maxFileSizeMb);
    // Writes what is queued and ends the worker; Start may be called again.
    void Stop();
    // For a process that will not write a log: drops what is queued, and later calls cost only
    // the test of Enabled, until Start.
    void Discard();

    // Whether a call at this level would be written. Callers that build long texts test it first.
    bool Enabled(int level) const {
        return level >= level_.load(std::memory_order_relaxed) &&
               !discarding_.load(std::memory_order_relaxed);
    }

    template <typename... Args>
    void Log(int level, std::string_view format, const Args&... args) {
        if (!Enabled(level))
            return;
        Enqueue(level, FormatLogMessage(format, args...));
    }

    // Replaces the source of the local date and time of the lines (std::time by default).
    void SetClockForTesting(std::function<std::time_t()> now);

    const std::string& basePath() const { return basePath_; }
    int level() const { return level_.load(std::memory_order_relaxed); }
    int retentionDays() const { return retentionDays_; }
    int maxFileSizeMb() const { return maxFileSizeMb_; }

  private:
    struct Entry {
        int level;
        std::string message;
    };

    void Enqueue(int level, std::string message);
    void WorkerLoop();
    void WriteEntry(const Entry& entry);
    std::filesystem::path WorkingPath(const std::filesystem::path& today);
    std::time_t Now();

    std::string basePath_;
    std::atomic<int> level_{kLogInfo};
    std::atomic<bool> discarding_{false};
    int retentionDays_ = 30;
    int maxFileSizeMb_ = 30;

    std::deque<Entry> queue_;
    std::size_t queuedBytes_ = 0;  // guarded by queueMutex_: the message bytes in queue_
    bool workerRunning_ = false;   // guarded by queueMutex_: entries are capped while it is false
    std::mutex queueMutex_;
    std::condition_variable queueSignal_;
    std::atomic<bool> exitFlag_{false};
    std::thread worker_;

    std::filesystem::path currentPath_;  // worker only: the file last written

    std::mutex clockMutex_;
    std::function<std::time_t()> clock_;
};
