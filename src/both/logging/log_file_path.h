// Names of the dated log files: "<base>/<YYYY>/<MM>/<DD>.txt" and, once a day's file is full,
// the rotated names "<DD>_1.txt", "<DD>_2.txt" ... of the same day.
#pragma once

#include <ctime>
#include <filesystem>

// The plain file of the local day that `localDate` falls on.
std::filesystem::path DailyLogPath(const std::filesystem::path& base, const std::tm& localDate);

// The next name in a day's series: "15.txt" -> "15_1.txt", "15_1.txt" -> "15_2.txt". A name
// whose part after its last "_" is not a number starts a series of its own ("a_b.txt" ->
// "a_b_1.txt").
std::filesystem::path NextRotatedPath(const std::filesystem::path& path);

// The plain name of the series a path belongs to: "15_2.txt" -> "15.txt".
std::filesystem::path PlainLogPath(const std::filesystem::path& path);
