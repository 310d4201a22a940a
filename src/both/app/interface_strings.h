// The plug-in's resource strings of its ribbon, task pane and greeting, by their ids. The
// plug-in starts only on an "en-US" host, so the English table is the one in use.
#pragma once

#include <string>

namespace ids {
constexpr int kGreetingTip = 1004;
constexpr int kProtectCategory = 1010;
constexpr int kRedactionPanel = 1011;
constexpr int kSableMarkTooltip = 1016;
constexpr int kAutoRedaction = 1017;
constexpr int kBatchRedaction = 1018;
constexpr int kAutoRedactionTooltip = 1020;
constexpr int kProfile = 1021;
constexpr int kSableMark = 1022;
constexpr int kBatchRedactionTooltip = 1024;
constexpr int kProfileTooltip = 1026;
}  // namespace ids

// The text of one of the ids above; empty for any other id.
std::wstring InterfaceString(int id);
