#include "batch_files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace pdfhost {

namespace fs = std::filesystem;

BatchInputs CollectBatchInputs(const std::vector<std::string>& paths) {
    BatchInputs inputs;
    for (const std::string& path : paths) {
        std::error_code error;
        const fs::path absolute = fs::absolute(path, error).lexically_normal();
        if (error || !fs::exists(absolute, error)) {
            inputs.missing.push_back(path);
            continue;
        }
        if (!fs::is_directory(absolute, error)) {
            inputs.files.push_back(absolute.string());
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(absolute, error)) {
            std::error_code kind;
            if (entry.is_regular_file(kind))
                inputs.files.push_back(entry.path().string());
        }
    }
    std::sort(inputs.files.begin(), inputs.files.end());
    inputs.files.erase(std::unique(inputs.files.begin(), inputs.files.end()), inputs.files.end());
    return inputs;
}

std::string BatchTarget(const std::string& source, const std::string& folder,
                        const std::string& prefix, const std::string& suffix) {
    const std::size_t slash = source.rfind('/');
    const std::string sourceFolder = slash == std::string::npos ? "" : source.substr(0, slash + 1);
    const std::string name = slash == std::string::npos ? source : source.substr(slash + 1);
    std::string where = folder.empty() ? sourceFolder : folder;
    if (!where.empty() && where.back() != '/')
        where += '/';
    if (prefix.empty() && suffix.empty())
        return where + name;
    const std::size_t dot = name.rfind('.');
    const std::string base = dot == std::string::npos ? name : name.substr(0, dot);
    const std::string extension = dot == std::string::npos ? ".pdf" : name.substr(dot);
    return where + prefix + base + suffix + extension;
}

}  // namespace pdfhost
