#include "batch_options.h"

#include <stdexcept>

namespace pdfhost {
namespace {

// What a file name can't hold; the options dialog drops these too.
const std::string& NameText(const std::string& option, const std::string& text) {
    if (text.find_first_of("\\:*?\"<>|/") != std::string::npos)
        throw std::invalid_argument(option + " can't hold any of \\ : * ? \" < > | /");
    return text;
}

}  // namespace

bool ReadBatchOption(const std::string& arg, const std::function<const std::string&()>& value,
                     BatchOptions& options) {
    if (arg == "--out") {
        options.out = value();
        if (options.out.empty())
            throw std::invalid_argument("--out needs a folder");
    } else if (arg == "--prefix") {
        options.prefix = NameText(arg, value());
    } else if (arg == "--suffix") {
        options.suffix = NameText(arg, value());
    } else if (arg == "--overwrite") {
        options.overwrite = true;
    } else if (arg == "--terms") {
        options.terms = value();
    } else if (arg == "--report") {
        options.report = value();
    } else if (arg == "--shard") {
        options.shard = value();
    } else if (arg == "--web") {
        options.web = value();
    } else {
        return false;
    }
    return true;
}

}  // namespace pdfhost
