// The embedded browser's rules for addresses: which navigations it lets through, what it shows
// instead, and how a bare address is completed.
#pragma once

#include <string>
#include <string_view>

// Shown in place of a refused navigation.
inline constexpr const wchar_t* kBlockedDomainHtml =
    L"<h1>Domain Blocked</h1><p>You've attempted to navigate to a domain in the blocked sites "
    L"list. Press back to return to the previous page.</p>";

// True for addresses that begin exactly (case included) with "https", "about:" or "file:///".
// Everything else, "http://" too, is refused.
bool IsNavigationAllowed(std::wstring_view uri);

// An address with "://" stays as it is; otherwise a drive path ("c:...") gets "file://" in front
// and anything else "http://".
std::wstring NormalizeUrl(const std::wstring& url);
