// Downloads through the system's URL moniker, with progress reports.
#pragma once

#include <string>

#include "app/platform_services.h"

// Writes the body of `url` to `path`, reporting the binding's statuses 4 (begin), 5 (data) and
// 6 (end) to `progress`. The system's cache keeps no copy, before or after. True when the file
// was written; a failure leaves no file at `path`.
bool DownloadUrlToFile(const std::wstring& url, const std::wstring& path,
                       DownloadProgress& progress);
