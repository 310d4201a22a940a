#include "local_time.h"

std::tm LocalTime(std::time_t time) {
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &time);
#else
    localtime_r(&time, &local);
#endif
    return local;
}

std::string FormatTime(const std::tm& time, const char* format) {
    char buffer[256];
    const std::size_t length = std::strftime(buffer, sizeof buffer, format, &time);
    return std::string(buffer, length);
}
