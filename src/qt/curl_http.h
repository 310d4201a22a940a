// The plug-in's HTTP client over libcurl.
#pragma once

#include <string>

#include "app/platform_services.h"

// One blocking GET: 0 with the body bytes unchanged when the server answered 200 with a
// non-empty body, 3 otherwise.
int HttpGet(const std::wstring& url, std::string& out, const HttpSettings& settings);
