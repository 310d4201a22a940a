#pragma once

#include <cstdint>
#include <string>

namespace pdfhost {

// The size of a file as the file list shows it: "0 bytes" .. "1023 bytes", then KB, MB and GB
// (units of 1024) with one decimal below ten units and none above, e.g. "1.5 KB", "12 MB".
// Negative sizes count as 0.
std::string FileSizeText(std::int64_t bytes);

}  // namespace pdfhost
