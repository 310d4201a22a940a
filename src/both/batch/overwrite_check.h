// The files a batch would overwrite: existing targets of the accepted files, unless the options
// allow overwriting.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "batch/batch_choice.h"

using PathExists = std::function<bool(const std::wstring&)>;

// The existing targets, each once, in the order of the set of (target, source) pairs the check
// fills from the last file to the first.
std::vector<std::wstring> TargetsToOverwrite(const std::vector<BatchFile>& files,
                                             const OutputOptions& options,
                                             const PathExists& exists);

// Whether a file of that path exists on disk.
bool FileExistsOnDisk(const std::wstring& path);
