// test_host PLUGIN.tpi [--xml RESULT.xml]: runs the plug-in library in the in-memory test host,
// prints one line per check and exits 1 at the first failed check (2 for a wrong command line).
// The XML result holds the number of checks made and failed.
#include <iostream>
#include <string>

#include "check_report.h"
#include "plugin_run.h"

namespace {

constexpr const char* kSuite = "test_host";

}  // namespace

int main(int argc, char** argv) {
    std::filesystem::path plugin;
    std::filesystem::path xml;
    bool understood = true;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--xml" && i + 1 < argc)
            xml = argv[++i];
        else if (plugin.empty() && arg.rfind("--", 0) != 0)
            plugin = arg;
        else
            understood = false;
    }
    if (!understood || plugin.empty()) {
        std::cerr << "usage: test_host PLUGIN.tpi [--xml RESULT.xml]\n";
        return 2;
    }

    testhost::CheckReport report(std::cout);
    try {
        testhost::RunPlugin(std::filesystem::absolute(plugin), report);
    } catch (const testhost::CheckFailed&) {
        // Printed where it failed.
    } catch (const std::exception& e) {
        report.Check("the run goes to its end", false, e.what());
    }

    const bool passed = report.Failures() == 0 && report.Count() > 0;
    std::cout << (passed ? "PASSED " : "FAILED ") << report.Count() << " checks, "
              << report.Failures() << " failed\n";
    if (!xml.empty() && !report.WriteXml(xml, kSuite)) {
        std::cerr << "test_host: cannot write " << xml << '\n';
        return 1;
    }
    return passed ? 0 : 1;
}
