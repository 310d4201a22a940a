// The self-test report: every bridge exchange the integration suite replays is written to an HTML
// report through the logger's report sink.
#pragma once

#include <string>

// Records one replayed request and the texts it caused.
void ReportExchange(const std::string& test, const std::string& request, const std::string& output);
