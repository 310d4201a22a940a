#include <gtest/gtest.h>

#include <atomic>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "logging/async_logger.h"
#include "logging/log_file_path.h"
#include "util/wide_path.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kOneMb = 1048576;

// 10:20:30 local time on a day of March 2026.
std::time_t MarchDay(int day) {
    std::tm date{};
    date.tm_year = 126;
    date.tm_mon = 2;
    date.tm_mday = day;
    date.tm_hour = 10;
    date.tm_min = 20;
    date.tm_sec = 30;
    date.tm_isdst = -1;
    return std::mktime(&date);
}

// A written line of the 15th.
std::string Line(const std::string& level, const std::string& text) {
    return "2026-03-15 10:20:30 [" + level + "] " + text;
}

std::vector<std::string> ReadLines(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

void FillFile(const fs::path& path, std::uintmax_t size) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << std::string(size, 'f');
}

class AsyncLoggerTest : public testing::Test {
  protected:
    void SetUp() override {
        base_ = fs::path(testing::TempDir()) /
                (std::string("brevan_log_") +
                 testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(base_);
        SetDay(15);
    }
    void TearDown() override {
        logger_.Stop();
        fs::remove_all(base_);
    }

    void SetDay(int day) {
        const std::time_t now = MarchDay(day);
        logger_.SetClockForTesting([now] { return now; });
    }
    void Start(int level = kLogInfo, int sizeMb = 30) {
        logger_.Start(Utf8OfPath(base_), 30, level, sizeMb);
    }
    fs::path DayFile(const char* name) const { return base_ / "2026" / "03" / name; }

    fs::path base_;
    AsyncLogger logger_;
};

TEST(LogFormatTest, PlaceholdersTakeArgumentsInOrder) {
    EXPECT_EQ(FormatLogMessage("Get Dispatch % input:  %", std::string("getCurrentDoc"), 42),
              "Get Dispatch getCurrentDoc input:  42");
    EXPECT_EQ(FormatLogMessage("% of % is %", 1.5, "x", 'c'), "1.5 of x is c");
    // Surplus placeholders stay, surplus arguments are left out.
    EXPECT_EQ(FormatLogMessage("a % b % c", 1), "a 1 b % c");
    EXPECT_EQ(FormatLogMessage("x=% end", 1, 2, 3), "x=1 end");
    EXPECT_EQ(FormatLogMessage("no placeholder", 7), "no placeholder");
    EXPECT_EQ(FormatLogMessage("100%"), "100%");
    EXPECT_EQ(FormatLogMessage("%%", "a", "b"), "ab");
}

TEST(LogFilePathTest, RotatedNamesOfADay) {
    const fs::path folder = "/logs/my_base/2026/03";
    for (const auto& [name, next] : {std::pair{"15.txt", "15_1.txt"},
                                     {"15_1.txt", "15_2.txt"},
                                     {"15_9.txt", "15_10.txt"},
                                     {"a_b.txt", "a_b_1.txt"},
                                     {"15_.txt", "15__1.txt"}})
        EXPECT_EQ(NextRotatedPath(folder / name), folder / next);
    EXPECT_EQ(PlainLogPath(folder / "15_2.txt"), folder / "15.txt");
    EXPECT_EQ(PlainLogPath(folder / "15.txt"), folder / "15.txt");
}

TEST_F(AsyncLoggerTest, WritesDatedLinesAboveTheLevel) {
    Start(kLogInfo);
    EXPECT_FALSE(logger_.Enabled(kLogDebug));
    EXPECT_TRUE(logger_.Enabled(kLogInfo));
    logger_.Log(kLogDebug, "dropped %", 1);
    logger_.Log(kLogInfo, "kept % and %", "text", 2);
    logger_.Log(kLogCritical, "Gr\u00fc\u00dfe");
    logger_.Stop();
    EXPECT_EQ(ReadLines(DayFile("15.txt")),
              (std::vector<std::string>{Line("INFO", "kept text and 2"),
                                        Line("CRITICAL", "Gr\u00fc\u00dfe")}));
}

TEST_F(AsyncLoggerTest, QueuedLinesAreWrittenOnStopAndDestruction) {
    // Before Start the default level applies and calls are kept for the worker.
    logger_.Log(kLogDebug, "debug before start");
    logger_.Log(kLogInfo, "first");
    Start();
    logger_.Log(kLogWarning, "second");
    logger_.Stop();
    logger_.Log(kLogError, "after stop");
    Start();
    logger_.Stop();
    EXPECT_EQ(ReadLines(DayFile("15.txt")),
              (std::vector<std::string>{Line("INFO", "first"), Line("WARNING", "second"),
                                        Line("ERROR", "after stop")}));

    {
        AsyncLogger scoped;
        scoped.SetClockForTesting([] { return MarchDay(16); });
        scoped.Start(Utf8OfPath(base_), 30, kLogInfo, 30);
        for (int i = 0; i < 100; ++i)
            scoped.Log(kLogInfo, "line %", i);
    }
    EXPECT_EQ(ReadLines(DayFile("16.txt")).size(), 100u);
}

TEST_F(AsyncLoggerTest, KeepsOnlyTheNewestEntriesBeforeStart) {
    const int total = static_cast<int>(AsyncLogger::kPendingLimit) + 904;
    for (int i = 0; i < total; ++i)
        logger_.Log(kLogInfo, "%", i);
    Start();
    logger_.Stop();
    const std::vector<std::string> lines = ReadLines(DayFile("15.txt"));
    ASSERT_EQ(lines.size(), AsyncLogger::kPendingLimit);
    EXPECT_EQ(lines.front(), Line("INFO", "904"));
    EXPECT_EQ(lines.back(), Line("INFO", std::to_string(total - 1)));
}

TEST_F(AsyncLoggerTest, LongLinesBeforeStartAreCappedByBytesAndDiscardDropsEverything) {
    // Three lines of 600 KiB and a short one: two long lines pass the 1 MiB cap, so the older go.
    const std::string long_text(600 * 1024, 'x');
    for (int i = 0; i < 3; ++i)
        logger_.Log(kLogInfo, "% %", i, long_text);
    logger_.Log(kLogInfo, "short");
    Start();
    logger_.Stop();
    std::vector<std::string> lines = ReadLines(DayFile("15.txt"));
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].substr(0, 29), Line("INFO", "2 "));
    EXPECT_EQ(lines[1], Line("INFO", "short"));

    logger_.Log(kLogInfo, "queued then dropped");
    logger_.Discard();
    EXPECT_FALSE(logger_.Enabled(kLogError));
    logger_.Log(kLogError, "never queued");
    Start();
    logger_.Log(kLogInfo, "after start");
    logger_.Stop();
    lines = ReadLines(DayFile("15.txt"));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[2], Line("INFO", "after start"));
}

TEST_F(AsyncLoggerTest, FullFileContinuesInRotatedNameForTheRestOfTheDay) {
    Start(kLogInfo, 1);
    // Each line is 19 bytes of time, " [INFO] ", a 1,000-byte message and a line end: 1,028
    // bytes. 1,020 lines stay below 1 MiB, the 1,021st passes it.
    const std::string padding(995, 'x');
    for (int i = 1000; i < 2025; ++i)
        logger_.Log(kLogInfo, "% %", i, padding);
    logger_.Stop();

    const std::vector<std::string> plain = ReadLines(DayFile("15.txt"));
    ASSERT_EQ(plain.size(), 1021u);
    EXPECT_GE(fs::file_size(DayFile("15.txt")), kOneMb);
    EXPECT_EQ(plain.back().substr(27, 4), "2020");
    const std::vector<std::string> rotated = ReadLines(DayFile("15_1.txt"));
    ASSERT_EQ(rotated.size(), 4u);
    EXPECT_EQ(rotated.front().substr(27, 4), "2021");

    // The rotated name stays in use even when the plain file no longer is full.
    fs::remove(DayFile("15.txt"));
    Start(kLogInfo, 1);
    logger_.Log(kLogInfo, "later");
    logger_.Stop();
    EXPECT_FALSE(fs::exists(DayFile("15.txt")));
    EXPECT_EQ(ReadLines(DayFile("15_1.txt")).back(), Line("INFO", "later"));
}

TEST_F(AsyncLoggerTest, RotationSkipsFullFilesAndANewDayStartsAtThePlainName) {
    FillFile(DayFile("15.txt"), kOneMb);
    FillFile(DayFile("15_1.txt"), kOneMb + 10);
    Start(kLogInfo, 1);
    logger_.Log(kLogInfo, "third file");
    logger_.Stop();
    EXPECT_EQ(ReadLines(DayFile("15_2.txt")), std::vector<std::string>{Line("INFO", "third file")});

    SetDay(16);
    Start(kLogInfo, 1);
    logger_.Log(kLogInfo, "next day");
    logger_.Stop();
    EXPECT_EQ(ReadLines(DayFile("16.txt")),
              std::vector<std::string>{"2026-03-16 10:20:30 [INFO] next day"});
    EXPECT_FALSE(fs::exists(DayFile("16_2.txt")));
    EXPECT_EQ(ReadLines(DayFile("15_2.txt")).size(), 1u);
}

TEST_F(AsyncLoggerTest, UncreatableFolderCostsAStderrLineOnly) {
    FillFile(base_ / "blocker", 1);
    const fs::path blocked = base_ / "blocker" / "logs";
    logger_.Start(Utf8OfPath(blocked), 30, kLogInfo, 30);
    testing::internal::CaptureStderr();
    logger_.Log(kLogInfo, "lost");
    logger_.Stop();
    const std::string expected = "Error: Unable to open log file \"" +
                                 Utf8OfPath(blocked / "2026" / "03" / "15.txt") +
                                 "\" for writing.\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), expected);

    Start();
    logger_.Log(kLogInfo, "written");
    logger_.Stop();
    EXPECT_EQ(ReadLines(DayFile("15.txt")).size(), 1u);
}

TEST_F(AsyncLoggerTest, WorkerSurvivesAFailingEntry) {
    std::atomic<int> calls = 0;
    const std::time_t day = MarchDay(15);
    logger_.SetClockForTesting([&calls, day] {
        if (calls++ == 0)
            throw std::runtime_error("clock failure");
        return day;
    });
    Start();
    testing::internal::CaptureStderr();
    logger_.Log(kLogInfo, "lost");
    logger_.Log(kLogInfo, "kept");
    logger_.Stop();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Error:An exception was thrown in AsyncLogger::worker().\n");
    EXPECT_EQ(ReadLines(DayFile("15.txt")), std::vector<std::string>{Line("INFO", "kept")});
}

}  // namespace
