// The parts of an http or https address, as the HTTP client needs them to reach the server.
#pragma once

#include <string>

class UrlParts {
  public:
    // Cracks `url`. Only the schemes "http" and "https" (any case) with a non-empty host and a
    // port of 1 to 65535 are understood; anything else leaves the parts invalid.
    explicit UrlParts(std::wstring url);

    bool IsValid() const { return valid_; }
    // Each accessor gives "" while the parts are invalid; the port then reads 80.
    const std::wstring& Scheme() const { return scheme_; }
    const std::wstring& Host() const { return host_; }
    unsigned Port() const { return port_; }
    const std::wstring& Path() const { return path_; }
    // The query and fragment with their leading "?" or "#".
    const std::wstring& ExtraInfo() const { return extraInfo_; }

    // A request is secure when the port is 443 or the scheme is "https" in any case.
    bool IsSecure() const;
    // The address a transfer library is given: the scheme that `IsSecure` implies, the host,
    // the explicit port, and the path and extra information with characters that may not stand
    // in an address percent-encoded as UTF-8. "" while the parts are invalid.
    std::string RequestUrl() const;

  private:
    bool Crack();

    std::wstring url_;
    std::wstring scheme_;
    std::wstring host_;
    unsigned port_ = 80;
    std::wstring path_;
    std::wstring extraInfo_;
    bool valid_ = false;
};

// The scheme, "://" and the domain: the host up to its first "/", and of that the part up to its
// first ":".
std::wstring BaseUrlOf(const UrlParts& parts);
