// The one HTTP request the portable logic makes itself: a blocking GET of a small document.
#pragma once

#include <string>

struct HttpSettings {
    bool verifyCertificates = true;
};

class HttpClient {
  public:
    virtual ~HttpClient() = default;
    // One blocking GET: 0 with the body when the server answered 200 with a non-empty body,
    // otherwise 3.
    virtual int HttpGet(const std::wstring& url, std::string& body,
                        const HttpSettings& settings) = 0;
};
