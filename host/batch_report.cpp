#include "batch_report.h"

#include <algorithm>
#include <numeric>

namespace pdfhost {
namespace {

int Total(const BatchFileReport& file) {
    return std::accumulate(file.findings.begin(), file.findings.end(), 0,
                           [](int sum, const auto& kind) { return sum + kind.second; });
}

std::string NameOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

void PrintBatchReport(std::ostream& out, const std::vector<BatchFileReport>& files) {
    for (const BatchFileReport& file : files) {
        out << file.path << ": ";
        if (!file.Redacted()) {
            out << "failed: " << file.reason << '\n';
            continue;
        }
        out << "redacted, " << file.pages << (file.pages == 1 ? " page" : " pages") << ", findings";
        for (const auto& [kind, count] : file.findings)
            out << ' ' << kind << ' ' << count << ',';
        out << " total " << Total(file) << " -> " << file.output << '\n';
    }
    const auto redacted = std::count_if(files.begin(), files.end(),
                                        [](const BatchFileReport& f) { return f.Redacted(); });
    out << files.size() << (files.size() == 1 ? " file: " : " files: ") << redacted << " redacted, "
        << files.size() - static_cast<std::size_t>(redacted) << " failed\n";
}

Json::Value BatchReportJson(const std::vector<BatchFileReport>& files) {
    Json::Value report(Json::objectValue);
    Json::Value list(Json::arrayValue);
    int redacted = 0;
    for (const BatchFileReport& file : files) {
        Json::Value entry(Json::objectValue);
        entry["path"] = file.path;
        entry["name"] = NameOf(file.path);
        entry["status"] = file.Redacted() ? "redacted" : "failed";
        entry["pages"] = file.pages >= 0 ? Json::Value(file.pages) : Json::Value();
        Json::Value findings(Json::objectValue);
        for (const auto& [kind, count] : file.findings)
            findings[kind] = count;
        entry["findings"] = findings;
        entry["total"] = Total(file);
        entry["output"] = file.output.empty() ? Json::Value() : Json::Value(file.output);
        entry["reason"] = file.reason.empty() ? Json::Value() : Json::Value(file.reason);
        list.append(entry);
        redacted += file.Redacted() ? 1 : 0;
    }
    report["files"] = list;
    report["summary"]["files"] = static_cast<int>(files.size());
    report["summary"]["redacted"] = redacted;
    report["summary"]["failed"] = static_cast<int>(files.size()) - redacted;
    return report;
}

}  // namespace pdfhost
