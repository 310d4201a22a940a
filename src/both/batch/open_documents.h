// The documents open in the host, by file path, and the hidden opening the batch uses for files
// that are not open.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/host_api.h"

// An open document with its file's path and its index in the host's list.
struct OpenDocument {
    HostDoc doc = nullptr;
    std::wstring path;
    int index = 0;
};

// The documents open in the host, in the host's order.
std::vector<OpenDocument> OpenDocuments(HostApi& host);

// Each open document's path with its index in the host's list; a later document with the same
// path doesn't replace the first.
std::map<std::wstring, int> OpenDocumentsByPath(HostApi& host);

// The open document whose file is `path`, or null.
HostDoc FindOpenDocument(HostApi& host, const std::wstring& path);

// Opens `path` without a window, read-only and quietly; null when the host can't.
HostDoc OpenHidden(HostApi& host, const std::wstring& path);

// The files of the open documents chosen (their paths as listed), in order: a batch works on files,
// so a document with unsaved changes or without a file is saved by the host first, after one
// warning (`text`, titled `title`, over `parent`); one whose save fails or is cancelled is left
// out.
std::vector<std::wstring> FilesOfChosenDocuments(HostApi& host,
                                                 const std::vector<OpenDocument>& chosen,
                                                 const std::wstring& text,
                                                 const std::wstring& title, HostWindow parent);
