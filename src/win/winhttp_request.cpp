#include "winhttp_request.h"

#include <windows.h>
// after windows.h, which it needs
#include <winhttp.h>

#include <array>

#include "win_handles.h"

namespace {

constexpr const wchar_t* kDefaultUserAgent = L"Tarvo Tethrix DRM Plug-in 1.0";
constexpr int kStageTimeoutMs = 2000;
// SSL 3.0, TLS 1.0, TLS 1.1 and TLS 1.2, as the service has always been reached.
constexpr DWORD kSecureProtocols = 0x0AA0;
// The flags that let a certificate of an unknown authority, a wrong name or a wrong date pass.
constexpr DWORD kLenientCertificateFlags = SECURITY_FLAG_IGNORE_UNKNOWN_CA |
                                           SECURITY_FLAG_IGNORE_CERT_CN_INVALID |
                                           SECURITY_FLAG_IGNORE_CERT_DATE_INVALID;
constexpr std::size_t kReadBlock = 1024;
// A body beyond this size fails the request instead of exhausting memory.
constexpr std::size_t kMaxBody = 64u << 20;
constexpr int kHttpOk = 200;
constexpr int kGetFailed = 3;

// The user's proxy, when the user's settings name one.
struct ProxyChoice {
    DWORD accessType = WINHTTP_ACCESS_TYPE_DEFAULT_PROXY;
    std::wstring proxy;
    std::wstring bypass;
};

ProxyChoice UserProxy() {
    WINHTTP_CURRENT_USER_IE_PROXY_CONFIG config{};
    ProxyChoice choice;
    if (!WinHttpGetIEProxyConfigForCurrentUser(&config))
        return choice;
    const GlobalString autoConfigUrl(config.lpszAutoConfigUrl);
    const GlobalString proxy(config.lpszProxy);
    const GlobalString bypass(config.lpszProxyBypass);
    if (proxy != nullptr && proxy.get()[0] != L'\0') {
        choice.accessType = WINHTTP_ACCESS_TYPE_NAMED_PROXY;
        choice.proxy = proxy.get();
        if (bypass != nullptr)
            choice.bypass = bypass.get();
    }
    return choice;
}

}  // namespace

void WinHttpCloser::operator()(void* handle) const {
    WinHttpCloseHandle(handle);
}

WinHttpRequest::WinHttpRequest(const std::wstring& url, const std::wstring& userAgent,
                               const HttpSettings& settings)
    : urlParts_(url) {
    const ProxyChoice proxy = UserProxy();
    const std::wstring agent = userAgent.empty() ? kDefaultUserAgent : userAgent;
    const bool named = proxy.accessType == WINHTTP_ACCESS_TYPE_NAMED_PROXY;
    session_.reset(WinHttpOpen(
        agent.c_str(), proxy.accessType, named ? proxy.proxy.c_str() : WINHTTP_NO_PROXY_NAME,
        named && !proxy.bypass.empty() ? proxy.bypass.c_str() : WINHTTP_NO_PROXY_BYPASS, 0));
    if (!session_)
        return;
    DWORD protocols = kSecureProtocols;
    WinHttpSetOption(session_.get(), WINHTTP_OPTION_SECURE_PROTOCOLS, &protocols, sizeof protocols);
    WinHttpSetTimeouts(session_.get(), kStageTimeoutMs, kStageTimeoutMs, kStageTimeoutMs,
                       kStageTimeoutMs);
    if (!urlParts_.IsValid())
        return;
    connection_.reset(WinHttpConnect(session_.get(), urlParts_.Host().c_str(),
                                     static_cast<INTERNET_PORT>(urlParts_.Port()), 0));
    if (!connection_)
        return;
    std::wstring object = urlParts_.Path() + urlParts_.ExtraInfo();
    if (object.empty())
        object = L"/";
    const DWORD flags = urlParts_.IsSecure() ? WINHTTP_FLAG_SECURE : WINHTTP_FLAG_REFRESH;
    request_.reset(WinHttpOpenRequest(connection_.get(), L"GET", object.c_str(), nullptr,
                                      WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES, flags));
    if (!request_)
        return;
    DWORD redirects = WINHTTP_OPTION_REDIRECT_POLICY_NEVER;
    WinHttpSetOption(request_.get(), WINHTTP_OPTION_REDIRECT_POLICY, &redirects, sizeof redirects);
    if (!settings.verifyCertificates) {
        DWORD security = 0;
        DWORD size = sizeof security;
        WinHttpQueryOption(request_.get(), WINHTTP_OPTION_SECURITY_FLAGS, &security, &size);
        security |= kLenientCertificateFlags;
        WinHttpSetOption(request_.get(), WINHTTP_OPTION_SECURITY_FLAGS, &security, sizeof security);
    }
}

bool WinHttpRequest::Send() {
    if (!request_)
        return false;
    if (!WinHttpSendRequest(request_.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0,
                            WINHTTP_NO_REQUEST_DATA, 0, 0, 0) ||
        !WinHttpReceiveResponse(request_.get(), nullptr)) {
        return false;
    }
    DWORD status = 0;
    DWORD size = sizeof status;
    return WinHttpQueryHeaders(
               request_.get(), WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
               WINHTTP_HEADER_NAME_BY_INDEX, &status, &size, WINHTTP_NO_HEADER_INDEX) &&
           status == kHttpOk;
}

bool WinHttpRequest::ReadBody(std::string& body) {
    body.clear();
    if (!request_)
        return false;
    std::array<char, kReadBlock> block{};
    for (;;) {
        block.fill(0);
        DWORD read = 0;
        if (!WinHttpReadData(request_.get(), block.data(), static_cast<DWORD>(block.size()),
                             &read)) {
            return false;
        }
        if (read == 0)
            return true;
        if (body.size() + read > kMaxBody)
            return false;
        body.append(block.data(), read);
    }
}

int WinHttpGet(const std::wstring& url, std::string& body, const HttpSettings& settings) {
    WinHttpRequest request(url, L"", settings);
    std::string received;
    if (!request.Send() || !request.ReadBody(received) || received.empty())
        return kGetFailed;
    body = std::move(received);
    return 0;
}
