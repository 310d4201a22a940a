#include "browser_navigation.h"

bool IsNavigationAllowed(std::wstring_view uri) {
    return uri.starts_with(L"https") || uri.starts_with(L"about:") || uri.starts_with(L"file:///");
}

std::wstring NormalizeUrl(const std::wstring& url) {
    if (url.find(L"://") != std::wstring::npos)
        return url;
    if (url.size() >= 2 && url[1] == L':')
        return L"file://" + url;
    return L"http://" + url;
}
