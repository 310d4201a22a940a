// The name of the running system, as usage reports carry it: the os-release file's PRETTY_NAME,
// else its NAME and VERSION_ID, else the empty text. The file is read through a reader the Linux
// platform layer gives.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

// The whole content of a file, or nothing when it cannot be read.
using FileReader = std::function<std::optional<std::string>(const std::string& path)>;

// The name that the text of an os-release file gives.
std::string SystemNameFromOsRelease(std::string_view text);

// The name from /etc/os-release, or from /usr/lib/os-release when the first cannot be read.
std::string SystemName(const FileReader& read);
