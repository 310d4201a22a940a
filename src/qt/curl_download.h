// Downloads of the plug-in over libcurl, with progress reports.
#pragma once

#include <string>

#include "app/platform_services.h"

// Writes the body of `url` to `path`; true when the server answered 200 and the whole body was
// written. A failure leaves no file at `path`.
bool DownloadUrlToFile(const std::wstring& url, const std::wstring& path,
                       DownloadProgress& progress, const HttpSettings& settings);
