// Names of the self-test report files: "<base>_<DD>-<MM>-<YYYY>_<HH>-<MM>-<SS><extension>", from
// the local time at which the report was made.
#pragma once

#include <ctime>
#include <filesystem>
#include <string_view>

std::filesystem::path ReportFilePath(const std::filesystem::path& base, const std::tm& localTime,
                                     std::string_view extension);
