#include "command_line.h"

#include <stdexcept>

namespace pdfhost {

const char* const kUsage =
    "usage: pdfhost [--headless] [--script] [--profile DIR] [--plugins DIR] [--lang TAG]\n"
    "               [--signed-in | --signed-out] [--account-server URL] [--browser-pane]\n"
    "               [FILE.pdf ...]\n"
    "       pdfhost --batch [--out DIR] [--prefix P] [--suffix S] [--overwrite] [--terms \"A, "
    "B\"]\n"
    "               [--report FILE.json] [--shard I/N|auto] [--profile DIR] [--plugins DIR]\n"
    "               [--account-server URL] [--web DIR] PATH...\n";

CommandLine ParseCommandLine(const std::vector<std::string>& args,
                             const std::filesystem::path& executableFolder) {
    CommandLine line;
    BatchOptions batch;
    bool batchOptionSeen = false;
    line.options.headless = false;
    line.options.plugins = (executableFolder / ".." / "plugins").lexically_normal();
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        const auto value = [&]() -> const std::string& {
            if (i + 1 >= args.size())
                throw std::invalid_argument(arg + " needs a value");
            return args[++i];
        };
        if (arg == "--headless") {
            line.options.headless = true;
        } else if (arg == "--script") {
            line.script = true;
            line.options.headless = true;
        } else if (arg == "--profile") {
            line.options.profile = value();
        } else if (arg == "--plugins") {
            line.options.plugins = value();
        } else if (arg == "--lang") {
            line.options.language = value();
        } else if (arg == "--signed-in") {
            line.options.signedIn = true;
        } else if (arg == "--signed-out") {
            line.options.signedIn = false;
        } else if (arg == "--account-server") {
            line.options.accountServer = value();
        } else if (arg == "--browser-pane") {
            line.browserPane = true;
        } else if (arg == "--batch") {
            line.batch.emplace();
            line.options.headless = true;
        } else if (ReadBatchOption(arg, value, batch)) {
            batchOptionSeen = true;
        } else if (arg.starts_with("--")) {
            throw std::invalid_argument("unknown option " + arg);
        } else {
            line.files.push_back(arg);
        }
    }
    if (!line.batch.has_value()) {
        if (batchOptionSeen)
            throw std::invalid_argument("batch options need --batch");
        return line;
    }
    if (line.script)
        throw std::invalid_argument("--batch and --script can't go together");
    if (line.files.empty())
        throw std::invalid_argument("--batch needs a file or folder");
    line.batch = batch;
    return line;
}

}  // namespace pdfhost
