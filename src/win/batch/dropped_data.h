// What a drag-and-drop hands the file list: the local files it names, or a mail program's
// attachments (a "FileGroupDescriptorW" with "FileContents" for each), which are saved to ".msg"
// files in the temp folder through the portable attachment drop.
#pragma once

#include <objidl.h>

#include <filesystem>
#include <string>
#include <vector>

#include "batch/mail_attachment_drop.h"

// The local files the drop names; empty when it names none.
std::vector<std::wstring> DroppedFilePaths(IDataObject& data);

// Whether the drop carries a mail program's attachments.
bool HasMailAttachments(IDataObject& data);

// Saves each attachment whose contents the drop gives, as storage, a stream or memory.
std::vector<DroppedAttachment> SaveMailAttachments(IDataObject& data,
                                                   const std::filesystem::path& tempFolder);
