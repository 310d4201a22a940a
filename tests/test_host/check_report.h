// CheckReport: the checks of one run, printed one line each as they are made and written at the
// end as a JUnit-style XML file, so that a caller that cannot trust the exit status (a program
// under an emulator may exit 0 without having run) can count what passed.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

namespace testhost {

// Thrown by Require when a check fails; the run stops there.
class CheckFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class CheckReport {
  public:
    explicit CheckReport(std::ostream& out) : out_(out) {}

    // Records a check and prints "ok   NAME" or "FAIL NAME: DETAIL"; gives `passed`.
    bool Check(const std::string& name, bool passed, const std::string& detail = {});
    // The same, and throws CheckFailed when it failed.
    void Require(const std::string& name, bool passed, const std::string& detail = {});

    int Count() const { return static_cast<int>(results_.size()); }
    int Failures() const;
    // Writes the report in the layout GoogleTest writes, `suite` naming the test suite.
    bool WriteXml(const std::filesystem::path& file, const std::string& suite) const;

  private:
    struct Result {
        std::string name;
        bool passed = false;
        std::string detail;
    };
    std::ostream& out_;
    std::vector<Result> results_;
};

}  // namespace testhost
