// The plug-in's resource strings that the commands show or write, by their ids. The
// plug-in starts only on an "en-US" host, so the English table is the one in use.
#pragma once

#include <string>

namespace ids {
constexpr int kDownloadingFile = 1006;
constexpr int kHighlightSubject = 1007;
constexpr int kRedactSubject = 1008;
constexpr int kUploadingFile = 1009;
constexpr int kRedactNamedPrompt = 1013;
constexpr int kPromptTitle = 1014;
constexpr int kPdfFiles = 1015;
constexpr int kRedactAllPrompt = 1027;
}  // namespace ids

// The text of a resource string; empty for an id this table does not hold.
std::wstring ResourceString(int id);
