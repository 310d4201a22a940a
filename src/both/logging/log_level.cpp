#include "log_level.h"

const char* LogLevelText(int level) {
    switch (level) {
        case kLogDebug:
            return "DEBUG";
        case kLogInfo:
            return "INFO";
        case kLogWarning:
            return "WARNING";
        case kLogError:
            return "ERROR";
        case kLogCritical:
            return "CRITICAL";
        default:
            return "";
    }
}
