#include "async_logger.h"

#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>

#include "local_time.h"
#include "log_file_path.h"
#include "util/wide_path.h"

namespace {

constexpr std::uintmax_t kBytesPerMb = 1024 * 1024;

bool IsFull(const std::filesystem::path& path, std::uintmax_t limit) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return !error && size >= limit;
}

}  // namespace

AsyncLogger& AsyncLogger::Instance() {
    static AsyncLogger logger;
    return logger;
}

AsyncLogger::AsyncLogger() : clock_([] { return std::time(nullptr); }) {}

AsyncLogger::~AsyncLogger() {
    Stop();
}

void AsyncLogger::Start(std::string basePath, int retentionDays, int level, int maxFileSizeMb) {
    Stop();
    basePath_ = std::move(basePath);
    retentionDays_ = retentionDays;
    level_.store(level, std::memory_order_relaxed);
    maxFileSizeMb_ = maxFileSizeMb;
    discarding_.store(false, std::memory_order_relaxed);
    {
        std::lock_guard lock(queueMutex_);
        exitFlag_ = false;
        workerRunning_ = true;
    }
    worker_ = std::thread(&AsyncLogger::WorkerLoop, this);
}

void AsyncLogger::Stop() {
    {
        // Set under the mutex so that a worker about to wait cannot miss the signal.
        std::lock_guard lock(queueMutex_);
        exitFlag_ = true;
    }
    queueSignal_.notify_all();
    if (worker_.joinable()) {
        if (worker_.get_id() == std::this_thread::get_id()) {
            worker_.detach();
        } else {
            worker_.join();
        }
    }
    std::lock_guard lock(queueMutex_);
    workerRunning_ = false;
}

void AsyncLogger::Discard() {
    Stop();
    discarding_.store(true, std::memory_order_relaxed);
    std::lock_guard lock(queueMutex_);
    queue_.clear();
    queuedBytes_ = 0;
}

void AsyncLogger::SetClockForTesting(std::function<std::time_t()> now) {
    std::lock_guard lock(clockMutex_);
    clock_ = std::move(now);
}

std::time_t AsyncLogger::Now() {
    std::lock_guard lock(clockMutex_);
    return clock_();
}

void AsyncLogger::Enqueue(int level, std::string message) {
    {
        std::lock_guard lock(queueMutex_);
        queuedBytes_ += message.size();
        queue_.push_back(Entry{level, std::move(message)});
        // Nobody writes yet: keep the newest lines only, so that a logger never started stays
        // small however long the replies it is handed.
        while (!workerRunning_ && queue_.size() > 1 &&
               (queue_.size() > kPendingLimit || queuedBytes_ > kPendingBytesLimit)) {
            queuedBytes_ -= queue_.front().message.size();
            queue_.pop_front();
        }
    }
    queueSignal_.notify_one();
}

void AsyncLogger::WorkerLoop() {
    for (;;) {
        std::unique_lock lock(queueMutex_);
        queueSignal_.wait(lock, [this] { return !queue_.empty() || exitFlag_; });
        if (queue_.empty())
            return;  // asked to end, and everything is written
        const Entry entry = std::move(queue_.front());
        queue_.pop_front();
        queuedBytes_ -= entry.message.size();
        lock.unlock();
        try {
            WriteEntry(entry);
        } catch (...) {
            std::cerr << "Error:An exception was thrown in AsyncLogger::worker()." << std::endl;
        }
    }
}

std::filesystem::path AsyncLogger::WorkingPath(const std::filesystem::path& today) {
    // A rotated name stays in use until the day changes.
    if (currentPath_.empty() || PlainLogPath(currentPath_) != today)
        return today;
    return currentPath_;
}

void AsyncLogger::WriteEntry(const Entry& entry) {
    const std::tm now = LocalTime(Now());
    std::filesystem::path path = WorkingPath(DailyLogPath(PathOfUtf8(basePath_), now));

    // A folder that cannot be made shows as a file that cannot be opened, below.
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);

    const std::uintmax_t limit = static_cast<std::uintmax_t>(maxFileSizeMb_) * kBytesPerMb;
    if (IsFull(path, limit)) {
        do {
            path = NextRotatedPath(path);
        } while (IsFull(path, limit));
    }
    currentPath_ = path;

    std::ofstream file(path, std::ios::out | std::ios::app | std::ios::binary);
    if (!file) {
        std::cerr << "Error: Unable to open log file \"" << Utf8OfPath(path) << "\" for writing."
                  << std::endl;
        return;
    }
    file << FormatTime(now, "%Y-%m-%d %H:%M:%S") << " [" << LogLevelText(entry.level) << "] "
         << entry.message << '\n';
}
