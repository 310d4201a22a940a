#include "check_report.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <ostream>

namespace testhost {
namespace {

// Text with the five XML special characters escaped.
std::string XmlEscaped(const std::string& text) {
    static const std::map<char, std::string> kEntities{
        {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&apos;"}};
    std::string escaped;
    for (const char c : text) {
        const auto entity = kEntities.find(c);
        // XML 1.0 has no place for other control characters, escaped or not.
        const bool control = static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t';
        escaped += entity != kEntities.end() ? entity->second : std::string(1, control ? ' ' : c);
    }
    return escaped;
}

}  // namespace

bool CheckReport::Check(const std::string& name, bool passed, const std::string& detail) {
    results_.push_back(Result{name, passed, detail});
    out_ << (passed ? "ok   " : "FAIL ") << name << (passed || detail.empty() ? "" : ": " + detail)
         << std::endl;
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
bool CheckReport::WriteXml(const std::filesystem::path& file, const std::string& suite) const {
    const std::string counts = "tests=\"" + std::to_string(Count()) + "\" failures=\"" +
                               std::to_string(Failures()) + "\" errors=\"0\"";
    std::ofstream xml(file, std::ios::binary | std::ios::trunc);
    xml << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        << "<testsuites " << counts << " name=\"AllTests\">\n"
        << "  <testsuite name=\"" << XmlEscaped(suite) << "\" " << counts << ">\n";
    for (const Result& result : results_) {
        xml << "    <testcase name=\"" << XmlEscaped(result.name) << "\" classname=\""
            << XmlEscaped(suite) << '"';
        if (result.passed)
            xml << "/>\n";
        else
            xml << ">\n      <failure message=\"" << XmlEscaped(result.detail) << "\"/>\n"
                << "    </testcase>\n";
    }
    xml << "  </testsuite>\n</testsuites>\n";
    return static_cast<bool>(xml.flush());
}

}  // namespace testhost
