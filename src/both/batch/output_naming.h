// The naming rule of a batch's results: where the result of a source file goes under the output
// options. Paths split at their last "/" or "\".
#pragma once

#include <string>

#include "batch/output_options.h"

struct OutputTarget {
    enum class Kind {
        None,    // nothing is saved
        Source,  // the result replaces its source
        Other,   // the result goes to `path`
    };
    Kind kind = Kind::None;
    std::wstring path;  // the source itself for Kind::Source

    bool operator==(const OutputTarget&) const = default;
};

OutputTarget TargetOf(const std::wstring& source, const OutputOptions& options);
