// A mail program's attachment drop: a group descriptor naming the attachments (the layout of
// "FileGroupDescriptorW") and, for each, its contents as a compound file. Each attachment is
// written to a new ".msg" file in the temp folder, which the file list then adds; converting it
// is left to the host's file opening.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct DroppedAttachment {
    std::filesystem::path file;  // the ".msg" file written in the temp folder
    std::wstring name;           // the attachment's own name, as the descriptor gives it
};

// The attachments' names in a group descriptor, in order; empty when the block is too short for
// the count it states. Each name is cut at its first NUL and at its last path separator.
std::vector<std::wstring> AttachmentNames(std::string_view descriptor);

// The contents of the attachment at an index; nullopt when the drop can't give them.
using AttachmentContents = std::function<std::optional<std::string>(std::size_t index)>;

// Writes each attachment whose contents can be had to a new file "MSG<unique>.msg" in
// `tempFolder`, created so that no existing file is reused; attachments without contents, or
// whose file can't be written, are left out.
std::vector<DroppedAttachment> SaveDroppedAttachments(std::string_view descriptor,
                                                      const AttachmentContents& contents,
                                                      const std::filesystem::path& tempFolder);
