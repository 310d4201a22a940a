// The check of a file before it joins a batch: it must open, hold no XFA form, and allow copying
// and changes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/host_api.h"

struct FileCheck {
    std::string_view errorKey;  // empty for an accepted file
    int64_t fileSize = 0;
    int pageCount = 0;

    bool accepted() const { return errorKey.empty(); }
};

inline constexpr std::string_view kParseErrorKey = "IDS_STR_PARSEERROR";
inline constexpr std::string_view kXfaErrorKey = "IDS_STR_XFAERRORDES";
inline constexpr std::string_view kPermissionErrorKey = "IDS_STR_PERMISSIONERROR";

// Checks `path` through its open document, or opens it hidden for the check and closes it again.
FileCheck CheckBatchFile(HostApi& host, const std::wstring& path);
