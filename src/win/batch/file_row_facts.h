// What the file list reads of a file on disk: its full long path, its folder and name, its size
// and modification time, and the files of a folder.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct FileFacts {
    int64_t size = 0;
    std::wstring modified;  // local time, "MM/dd/yyyy HH:mm:ss"
};

// The file's data; nothing when it doesn't exist.
std::optional<FileFacts> FileFactsOf(const std::wstring& path);

// `path` made absolute and with the long form of each name, as far as the names exist.
std::wstring FullLongPath(const std::wstring& path);

struct FolderAndName {
    std::wstring folder;  // without a separator at its end, except for a drive's root
    std::wstring name;
};
FolderAndName SplitPath(const std::wstring& path);

// The full paths of the files (not folders) directly in `folder`, in name order.
std::vector<std::wstring> FilesInFolder(const std::wstring& folder);
