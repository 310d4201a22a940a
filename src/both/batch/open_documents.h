// The documents open in the host, by file path, and the hidden opening the batch uses for files
// that are not open.
#pragma once

#include <map>
#include <string>

#include "host/host_api.h"

// Each open document's path with its index in the host's list; a later document with the same
// path doesn't replace the first.
std::map<std::wstring, int> OpenDocumentsByPath(HostApi& host);

// The open document whose file is `path`, or null.
HostDoc FindOpenDocument(HostApi& host, const std::wstring& path);

// Opens `path` without a window, read-only and quietly; null when the host can't.
HostDoc OpenHidden(HostApi& host, const std::wstring& path);
