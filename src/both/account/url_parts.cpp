#include "account/url_parts.h"

#include <algorithm>
#include <cwctype>

#include "util/utf.h"

namespace {

bool EqualsNoCase(const std::wstring& text, const wchar_t* lower) {
    std::size_t i = 0;
    for (; i < text.size() && lower[i] != L'\0'; ++i) {
        if (std::towlower(static_cast<wint_t>(text[i])) != static_cast<wint_t>(lower[i]))
            return false;
    }
    return i == text.size() && lower[i] == L'\0';
}

// Parses a decimal port; 0 for text that is not a port of 1 to 65535.
unsigned ParsePort(const std::wstring& text) {
    if (text.empty() || text.size() > 5)
        return 0;
    unsigned port = 0;
    for (wchar_t c : text) {
        if (c < L'0' || c > L'9')
            return 0;
        port = port * 10 + static_cast<unsigned>(c - L'0');
    }
    return port <= 65535 ? port : 0;
}

bool NeedsEscape(unsigned char c) {
    if (c <= 0x20 || c >= 0x7F)
        return true;
    switch (c) {
        case '"':
        case '<':
        case '>':
        case '\\':
        case '^':
        case '`':
        case '{':
        case '|':
        case '}':
            return true;
        default:
            return false;
    }
}

std::string Escape(const std::string& utf8) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(utf8.size());
    for (char ch : utf8) {
        const auto c = static_cast<unsigned char>(ch);
        if (NeedsEscape(c)) {
            out += '%';
            out += kHex[c >> 4];
            out += kHex[c & 0x0F];
        } else {
            out += ch;
        }
    }
    return out;
}

}  // namespace

UrlParts::UrlParts(std::wstring url) : url_(std::move(url)) {
    valid_ = Crack();
    if (!valid_) {
        scheme_.clear();
        host_.clear();
        path_.clear();
        extraInfo_.clear();
        port_ = 80;
    }
}

bool UrlParts::Crack() {
    const std::size_t schemeEnd = url_.find(L"://");
    if (schemeEnd == std::wstring::npos)
        return false;
    scheme_ = url_.substr(0, schemeEnd);
    const bool https = EqualsNoCase(scheme_, L"https");
    if (!https && !EqualsNoCase(scheme_, L"http"))
        return false;

    const std::size_t authorityStart = schemeEnd + 3;
    std::size_t authorityEnd = url_.find_first_of(L"/?#", authorityStart);
    if (authorityEnd == std::wstring::npos)
        authorityEnd = url_.size();
    std::wstring authority = url_.substr(authorityStart, authorityEnd - authorityStart);
    // User name and password are not part of what is sent.
    if (const std::size_t at = authority.rfind(L'@'); at != std::wstring::npos)
        authority.erase(0, at + 1);

    std::size_t hostEnd = 0;
    if (!authority.empty() && authority.front() == L'[') {
        hostEnd = authority.find(L']');
        if (hostEnd == std::wstring::npos)
            return false;
        ++hostEnd;
    } else {
        hostEnd = std::min(authority.find(L':'), authority.size());
    }
    host_ = authority.substr(0, hostEnd);
    if (host_.empty())
        return false;

    port_ = https ? 443 : 80;
    if (hostEnd < authority.size()) {
        if (authority[hostEnd] != L':')
            return false;
        const std::wstring portText = authority.substr(hostEnd + 1);
        if (!portText.empty()) {
            port_ = ParsePort(portText);
            if (port_ == 0)
                return false;
        }
    }

    const std::wstring rest = url_.substr(authorityEnd);
    const std::size_t extraStart = std::min(rest.find_first_of(L"?#"), rest.size());
    path_ = rest.substr(0, extraStart);
    extraInfo_ = rest.substr(extraStart);
    return true;
}

bool UrlParts::IsSecure() const {
    return port_ == 443 || EqualsNoCase(scheme_, L"https");
}

std::string UrlParts::RequestUrl() const {
    if (!valid_)
        return {};
    std::string object = Escape(ToUtf8(path_.empty() ? L"/" + extraInfo_ : path_ + extraInfo_));
    return (IsSecure() ? "https://" : "http://") + ToUtf8(host_) + ":" + std::to_string(port_) +
           object;
}

std::wstring BaseUrlOf(const UrlParts& parts) {
    std::wstring domain = parts.Host();
    domain = domain.substr(0, domain.find(L'/'));
    domain = domain.substr(0, domain.find(L':'));
    return parts.Scheme() + L"://" + domain;
}
