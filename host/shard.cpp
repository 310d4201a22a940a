#include "shard.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace pdfhost {
namespace {

// More parts than this is surely a mistake.
constexpr long long kMaxParts = 1000000;

// A whole decimal number (an optional leading minus, then digits only), or nothing.
std::optional<long long> Number(const std::string& text) {
    const std::size_t digits = !text.empty() && text[0] == '-' ? 1 : 0;
    if (text.size() <= digits || text.size() - digits > 9)
        return std::nullopt;
    if (!std::all_of(text.begin() + static_cast<std::ptrdiff_t>(digits), text.end(),
                     [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    return std::stoll(text);
}

long long Required(const Environment& environment, const std::string& name) {
    const std::optional<std::string> value = environment(name);
    if (!value.has_value())
        throw std::invalid_argument("--shard auto: " + name + " is not set");
    const std::optional<long long> number = Number(*value);
    if (!number.has_value())
        throw std::invalid_argument("--shard auto: " + name + " is not a number: " + *value);
    return *number;
}

Shard Checked(long long index, long long count, const std::string& what) {
    if (count < 1 || count > kMaxParts)
        throw std::invalid_argument(what + ": the number of parts must be 1 to 1000000");
    if (index < 0 || index >= count)
        throw std::invalid_argument(what + ": the part lies outside the parts");
    return Shard{static_cast<int>(index), static_cast<int>(count)};
}

}  // namespace

std::optional<std::string> ProcessEnvironment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

Shard ParseShard(const std::string& text, const Environment& environment) {
    if (text == "auto") {
        if (environment("SLURM_ARRAY_TASK_ID").has_value()) {
            const long long id = Required(environment, "SLURM_ARRAY_TASK_ID");
            const long long count = Required(environment, "SLURM_ARRAY_TASK_COUNT");
            const long long first = environment("SLURM_ARRAY_TASK_MIN").has_value()
                                        ? Required(environment, "SLURM_ARRAY_TASK_MIN")
                                        : 0;
            return Checked(id - first, count, "--shard auto (Slurm)");
        }
        if (environment("JOB_COMPLETION_INDEX").has_value()) {
            return Checked(Required(environment, "JOB_COMPLETION_INDEX"),
                           Required(environment, "JOB_COMPLETIONS"), "--shard auto (Kubernetes)");
        }
        throw std::invalid_argument(
            "--shard auto: neither SLURM_ARRAY_TASK_ID nor JOB_COMPLETION_INDEX is set");
    }
    const std::size_t slash = text.find('/');
    const std::optional<long long> part =
        slash == std::string::npos ? std::nullopt : Number(text.substr(0, slash));
    const std::optional<long long> count =
        slash == std::string::npos ? std::nullopt : Number(text.substr(slash + 1));
    if (!part.has_value() || !count.has_value())
        throw std::invalid_argument("--shard needs I/N or auto, not " + text);
    return Checked(*part - 1, *count, "--shard " + text);
}

std::vector<std::string> FilesOfShard(std::vector<std::string> files, const Shard& shard) {
    std::sort(files.begin(), files.end());
    files.erase(std::unique(files.begin(), files.end()), files.end());
    std::vector<std::string> mine;
    for (std::size_t i = static_cast<std::size_t>(shard.index); i < files.size();
         i += static_cast<std::size_t>(shard.count)) {
        mine.push_back(files[i]);
    }
    return mine;
}

}  // namespace pdfhost
