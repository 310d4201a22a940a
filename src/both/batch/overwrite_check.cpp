#include "overwrite_check.h"

#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

#include "batch/output_naming.h"
#include "util/wide_path.h"

std::vector<std::wstring> TargetsToOverwrite(const std::vector<BatchFile>& files,
                                             const OutputOptions& options,
                                             const PathExists& exists) {
    if (options.overwrite)
        return {};
    std::set<std::pair<std::wstring, std::wstring>> existing;
    for (auto file = files.rbegin(); file != files.rend(); ++file) {
        const OutputTarget target = TargetOf(file->path, options);
        if (target.kind != OutputTarget::Kind::None && exists(target.path))
            existing.emplace(target.path, file->path);
    }
    std::vector<std::wstring> targets;
    for (const auto& [target, source] : existing) {
        if (targets.empty() || targets.back() != target)
            targets.push_back(target);
    }
    return targets;
}

bool FileExistsOnDisk(const std::wstring& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(PathOfWide(path), error);
}
