// The files of a headless batch and where their outputs go.
#pragma once

#include <string>
#include <vector>

namespace pdfhost {

struct BatchInputs {
    std::vector<std::string> files;    // absolute, sorted, each once
    std::vector<std::string> missing;  // paths given that don't exist
};

// The files named by `paths`: a file itself, a folder each file in it (not its sub-folders).
BatchInputs CollectBatchInputs(const std::vector<std::string>& paths);

// The output of `source` as the batch's naming rule makes it: in `folder` (empty: the source's
// own folder), the base name between `prefix` and `suffix`, the extension kept (".pdf" when the
// name has none); with neither prefix nor suffix the name is kept.
std::string BatchTarget(const std::string& source, const std::string& folder,
                        const std::string& prefix, const std::string& suffix);

}  // namespace pdfhost
