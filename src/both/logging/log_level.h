// Severity levels of log lines and the text each level shows in a line.
#pragma once

enum LogLevel : int {
    kLogDebug = 0,
    kLogInfo = 1,
    kLogWarning = 2,
    kLogError = 3,
    kLogCritical = 4
};

// "DEBUG" ... "CRITICAL"; an empty text for any other number.
const char* LogLevelText(int level);
