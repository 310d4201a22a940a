#include "check_report.h"

#include <algorithm>
#include <fstream>
#include <ostream>
#include <sstream>

namespace testhost {

bool CheckReport::Check(const std::string& name, bool passed, const std::string& detail) {
    results_.push_back(Result{name, passed, detail});
    if (passed)
        out_ << "ok   " << name << '\n';
    else
        out_ << "FAIL " << name << (detail.empty() ? "" : ": " + detail) << '\n';
    out_.flush();
    return passed;
}

void CheckReport::Require(const std::string& name, bool passed, const std::string& detail) {
    if (!Check(name, passed, detail))
        throw CheckFailed(name);
}

int CheckReport::Failures() const {
    return static_cast<int>(
        std::count_if(results_.begin(), results_.end(), [](const Result& r) { return !r.passed; }));
}

// The layout GoogleTest writes, so that the scripts that read its reports read this one too.
std::string CheckReport::Xml(const std::string& suite) const {
    const std::string counts = "tests=\"" + std::to_string(Count()) + "\" failures=\"" +
                               std::to_string(Failures()) + "\" errors=\"0\"";
    std::ostringstream xml;
    xml << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        << "<testsuites " << counts << " name=\"AllTests\">\n"
        << "  <testsuite name=\"" << XmlEscaped(suite) << "\" " << counts << ">\n";
    for (const Result& result : results_) {
        xml << "    <testcase name=\"" << XmlEscaped(result.name) << "\" classname=\""
            << XmlEscaped(suite) << '"';
        if (result.passed) {
            xml << "/>\n";
            continue;
        }
        xml << ">\n      <failure message=\"" << XmlEscaped(result.detail) << "\"/>\n"
            << "    </testcase>\n";
    }
    xml << "  </testsuite>\n</testsuites>\n";
    return xml.str();
}

bool CheckReport::WriteXml(const std::filesystem::path& file, const std::string& suite) const {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << Xml(suite);
    return static_cast<bool>(out.flush());
}

std::string XmlEscaped(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&apos;";
                break;
            default: {
                // XML 1.0 has no place for other control characters, escaped or not.
                const bool control = static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t';
                escaped += control ? ' ' : c;
            }
        }
    }
    return escaped;
}

}  // namespace testhost
