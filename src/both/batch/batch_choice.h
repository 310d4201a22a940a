// What the file list dialog hands to a batch run, and what the page reports at its end.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "batch/output_options.h"

// An accepted file of the list.
struct BatchFile {
    std::wstring path;
    int64_t fileSize = 0;
    int pageCount = 0;
};

struct BatchChoice {
    std::vector<BatchFile> files;  // in list order
    int totalPages = 0;
    OutputOptions options;
};

struct BatchOutcome {
    int ret = 0;
    std::wstring message;
    std::vector<std::wstring> failedFiles;
};
