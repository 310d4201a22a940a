// The plug-in's HTTP client over libcurl.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "account/url_parts.h"
#include "app/platform_services.h"

// Takes the body of a 200 answer as it arrives.
class HttpBodySink {
  public:
    virtual ~HttpBodySink() = default;
    // Once, before the first piece (also for an empty body); `length` is 0 when the server did
    // not say. False stops the transfer.
    virtual bool Begin(std::uint64_t length) = 0;
    // False stops the transfer.
    virtual bool Write(std::string_view piece) = 0;
};

// One GET to one address; an object serves one request. Resolving and connecting have 2 seconds,
// and once connected a transfer in which no byte moves for 2 seconds fails. Redirects are not
// followed. A proxy comes from the environment. A request is encrypted when the port is 443 or
// the scheme is "https"; plain requests ask proxies not to answer from their caches.
class CurlHttp {
  public:
    // An empty user agent means the plug-in's own.
    CurlHttp(const std::wstring& url, const std::wstring& userAgent,
             const HttpSettings& settings = {});
    ~CurlHttp();
    CurlHttp(const CurlHttp&) = delete;
    CurlHttp& operator=(const CurlHttp&) = delete;

    // Adds request headers, one per "\r\n"-separated "Name: value" line. False when the address
    // could not be used or a line is not a header; then nothing is added.
    bool AddHeaders(const std::wstring& headers);
    // Hands the body to `sink` instead of keeping it for ReadBody. The sink must outlive Send.
    void SetBodySink(HttpBodySink* sink) { sink_ = sink; }
    // Sends the request, with `data` as its body when not empty, and receives the answer. True
    // only when the status is exactly 200 and the whole body arrived.
    bool Send(std::string_view data = {});
    // The status of the answer, 0 when none arrived.
    long Status() const { return status_; }
    // Empties `body`, then fills it with the body that Send kept.
    void ReadBody(std::string& body) const;
    std::wstring GetBaseUrl() const { return BaseUrlOf(urlParts_); }

  private:
    class Transfer;

    UrlParts urlParts_;
    std::wstring userAgent_;
    HttpSettings settings_;
    std::unique_ptr<Transfer> transfer_;
    HttpBodySink* sink_ = nullptr;
    std::string body_;
    long status_ = 0;
    bool sent_ = false;
};

// One blocking GET: 0 with the body bytes unchanged when the server answered 200 with a
// non-empty body, 3 otherwise.
int HttpGet(const std::wstring& url, std::string& out, const HttpSettings& settings);
