// The documents open in the host, by file path, and the hidden opening the batch uses for files
// that are not open.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "host/host_api.h"

// Each open document's path with its index in the host's list; a later document with the same
// path doesn't replace the first.
std::map<std::wstring, int> OpenDocumentsByPath(HostApi& host);

// The open document whose file is `path`, or null.
HostDoc FindOpenDocument(HostApi& host, const std::wstring& path);

// Opens `path` without a window, read-only and quietly; null when the host can't.
HostDoc OpenHidden(HostApi& host, const std::wstring& path);

// An open document chosen for a batch, with the path its list shows.
struct ChosenDocument {
    HostDoc doc = nullptr;
    std::wstring listedPath;
};

// The files of the chosen open documents, in order: a batch works on files, so a document with
// unsaved changes or without a file is saved by the host first, after one warning (`text`,
// titled `title`, over `parent`); one whose save fails or is cancelled is left out.
std::vector<std::wstring> FilesOfChosenDocuments(HostApi& host,
                                                 const std::vector<ChosenDocument>& chosen,
                                                 const std::wstring& text,
                                                 const std::wstring& title, HostWindow parent);
