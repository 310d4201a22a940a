// The one check that every status of the embedded browser goes through. A negative status is
// logged at ERROR with the place it came from; nothing else happens, and the caller goes on.
#pragma once

#include <cstdint>

// E_INVALIDARG: a web message that isn't a string.
inline constexpr int32_t kBrowserStatusInvalidArgument = static_cast<int32_t>(0x80070057u);

void CheckBrowserStatus(const char* file, int line, int32_t status);

#define CHECK_BROWSER_STATUS(status) CheckBrowserStatus(__FILE__, __LINE__, (status))
