// What a headless batch reports: a line per file (name, findings by kind, pages, output or the
// reason it failed) and a summary, or the same as JSON.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include <json/value.h>

namespace pdfhost {

struct BatchFileReport {
    std::string path{};
    int pages = -1;  // unknown until the file list checked the file
    std::map<std::string, int> findings{};
    std::string output{};  // the redacted copy; empty when there is none
    std::string reason{};  // why the file failed; empty when it was redacted

    bool Redacted() const { return reason.empty() && !output.empty(); }
};

// "<path>: redacted, <pages> pages, findings <kind> <n>, ... (<total>) -> <output>" or
// "<path>: failed: <reason>" per file, then "<n> files: <r> redacted, <f> failed".
void PrintBatchReport(std::ostream& out, const std::vector<BatchFileReport>& files);

// {"files": [{"path", "name", "status", "pages", "findings", "total", "output", "reason"}],
//  "summary": {"files", "redacted", "failed"}}.
Json::Value BatchReportJson(const std::vector<BatchFileReport>& files);

}  // namespace pdfhost
