// The plug-in's HTTP client over WinHTTP: one GET to one address, an object per request.
// Resolving, connecting, sending and receiving have 2 seconds each. Redirects are not followed.
// The user's proxy setting is used when it names a proxy. A request is encrypted when the port is
// 443 or the scheme is "https"; plain requests ask proxies not to answer from their caches.
#pragma once

#include <memory>
#include <string>

#include "account/http_client.h"
#include "account/url_parts.h"

// The system's header stays out of this one: it clashes with the downloader's.
struct WinHttpCloser {
    void operator()(void* handle) const;
};
using WinHttpHandle = std::unique_ptr<void, WinHttpCloser>;

class WinHttpRequest {
  public:
    // Opens the session, the connection and the request; a failed step leaves the later handles
    // unset, and Send then fails. An empty user agent means the plug-in's own.
    WinHttpRequest(const std::wstring& url, const std::wstring& userAgent,
                   const HttpSettings& settings);

    // Sends the request and receives the answer: true only for the status 200.
    bool Send();
    // Empties `body`, then fills it with the whole body; false when a read failed or the body
    // grew beyond what is kept in memory.
    bool ReadBody(std::string& body);

    bool IsOpen() const { return request_ != nullptr; }

  private:
    UrlParts urlParts_;
    WinHttpHandle session_;
    WinHttpHandle connection_;
    WinHttpHandle request_;
};

// One blocking GET: 0 with the body bytes unchanged when the server answered 200 with a
// non-empty body, 3 otherwise.
int WinHttpGet(const std::wstring& url, std::string& body, const HttpSettings& settings);
