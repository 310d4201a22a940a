// Splitting a batch's files between the parts of an array job. File i (0-based, in sorted order)
// belongs to part i mod N. A part is named "I/N" (I counted from 1), or "auto": then the array
// job's index is read from the environment, either Slurm's (SLURM_ARRAY_TASK_ID, with
// SLURM_ARRAY_TASK_COUNT parts, counted from SLURM_ARRAY_TASK_MIN when that is set, else from
// 0) or Kubernetes' indexed jobs (JOB_COMPLETION_INDEX, counted from 0, with JOB_COMPLETIONS
// parts). Slurm's variables win when both are set.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace pdfhost {

struct Shard {
    int index = 0;  // 0-based
    int count = 1;
    bool operator==(const Shard&) const = default;
};

// The value of an environment variable, or nothing when it is not set.
using Environment = std::function<std::optional<std::string>(const std::string& name)>;
// The process's environment.
std::optional<std::string> ProcessEnvironment(const std::string& name);

// Reads "I/N" or "auto". Throws std::invalid_argument naming what is wrong.
Shard ParseShard(const std::string& text, const Environment& environment);

// The files of `shard` among `files`, which are sorted (and without duplicates) first.
std::vector<std::string> FilesOfShard(std::vector<std::string> files, const Shard& shard);

}  // namespace pdfhost
