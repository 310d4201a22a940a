// Local calendar time and its text, shared by the logger and the report sinks.
#pragma once

#include <ctime>
#include <string>

// The local calendar time of a point in time (thread-safe).
std::tm LocalTime(std::time_t time);

// strftime of a calendar time; an empty text when the result does not fit 256 bytes.
std::string FormatTime(const std::tm& time, const char* format);
