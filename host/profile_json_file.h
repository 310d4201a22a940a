// The JSON files pdfhost keeps in its profile (settings, account): read leniently, written whole
// through a temporary file and a rename, so that a failed write never leaves half a file.
#pragma once

#include <filesystem>

#include <json/value.h>

namespace pdfhost {

// The object in `file`; an empty object when the file is missing, or when it is unreadable or holds
// no object, which is also reported on stderr as `what`.
Json::Value ReadProfileJson(const std::filesystem::path& file, const char* what);

// Writes `root` to `file`, indented, UTF-8. A failure is reported on stderr as `what` and leaves
// the old file as it was.
void WriteProfileJson(const std::filesystem::path& file, const Json::Value& root, const char* what);

}  // namespace pdfhost
