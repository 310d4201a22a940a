// Keeps the plug-in's own file operations inside the folders it made. Names that come from the
// page or a file are checked as a whole before they become part of a path, and every removal is
// confined to the folder it belongs to once both are resolved.
#pragma once

#include <filesystem>
#include <string_view>

// A name that stands for one file or folder of its own inside a folder, on every platform the
// plug-in runs on: not empty, at most 255 bytes in UTF-8, no control character (NUL included),
// no "/", "\" or ":", not "." or "..", no trailing dot or space, and no device name such as
// "CON", "NUL" or "COM1" (also with an extension).
bool IsPlainFileName(std::wstring_view name);

// Whether `target` lies strictly inside `root` once both are resolved (symbolic links followed
// as far as they exist, "." and ".." folded). The root itself is not inside.
bool IsInside(const std::filesystem::path& root, const std::filesystem::path& target);

// Removes `target` (with its contents when `recursive`) only when it lies strictly inside
// `root`. Returns true when nothing is left at `target`. A symbolic link is removed, never what
// it points to.
bool RemoveInside(const std::filesystem::path& root, const std::filesystem::path& target,
                  bool recursive);
