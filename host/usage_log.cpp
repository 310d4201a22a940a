#include "usage_log.h"

#include <ctime>
#include <fstream>
#include <iostream>

#include <json/writer.h>

namespace pdfhost {
namespace {

std::string UtcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

}  // namespace

void UsageLog::Append(const UsageReport& report) const {
    Json::Value line(Json::objectValue);
    line["time"] = UtcNow();
    line["name"] = report.name;
    line["type"] = report.type;
    line["details"] = report.details;
    line["module"] = report.module;
    line["version"] = report.version;
    line["extra1"] = report.extra1;
    line["extra2"] = report.extra2;
    line["last"] = report.last;

    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    std::ofstream out(file_, std::ios::binary | std::ios::app);
    out << Json::writeString(builder, line) << '\n';
    if (!out)
        std::cerr << "pdfhost: cannot append to usage file " << file_ << '\n';
}

}  // namespace pdfhost
