#include "page_address.h"

#include <cstdio>

#include "config/brevan_config.h"
#include "config/service_config.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

// The service value for `key`, or `fallback` when the document doesn't give it.
std::wstring ServiceValueOr(ServiceConfig& service, const wchar_t* key, std::wstring fallback) {
    std::wstring value;
    return service.GetValue(key, value) == ServiceConfig::kFound ? value : fallback;
}

// The lower 24 bits as six lower-case hexadecimal digits.
std::wstring ColourText(uint32_t colour) {
    wchar_t text[8] = {};
    std::swprintf(text, 8, L"%06x", static_cast<unsigned>(colour & 0xFFFFFFu));
    return text;
}

}  // namespace

bool FillPlaceholder(std::wstring& url, const std::wstring& key, const std::wstring& value) {
    const std::wstring placeholder = key + L"=%s";
    const std::wstring filled = key + L"=" + value;
    bool found = false;
    for (std::size_t at = url.find(placeholder); at != std::wstring::npos;
         at = url.find(placeholder, at + filled.size())) {
        url.replace(at, placeholder.size(), filled);
        found = true;
    }
    return found;
}

void BuildPageUrl(HostApi& host, const BrevanConfig* configured, ServiceConfig* published,
                  bool accountPage, PageDialogKind kind, std::wstring& url) {
    if (configured == nullptr || published == nullptr)
        return;
    const BrevanConfig& config = *configured;
    ServiceConfig& service = *published;

    std::wstring address;
    const wchar_t* templateKey = config.preproduction ? ServiceConfig::kPreproductionPageTemplate
                                                      : ServiceConfig::kPageTemplate;
    if (service.GetValue(templateKey, address) != ServiceConfig::kFound)
        return;

    FillPlaceholder(address, L"platform", config.platformName);
    FillPlaceholder(address, L"version", config.hostVersion);
    FillPlaceholder(address, L"language", config.language);
    if (address.find(L"ai_domain") != std::wstring::npos) {
        FillPlaceholder(
            address, L"ai_domain",
            ServiceValueOr(service, ServiceConfig::kServiceDomain, config.serverAddress));
    }
    if (address.find(L"ai_engine") != std::wstring::npos)
        FillPlaceholder(address, L"ai_engine",
                        ServiceValueOr(service, ServiceConfig::kEngine, L""));
    if (address.find(L"ai_key") != std::wstring::npos)
        FillPlaceholder(address, L"ai_key",
                        ServiceValueOr(service, ServiceConfig::kEngineKey, L""));

    address += L"&pluginversion=" + config.pluginVersion;
    address += L"&ThemeColor=" +
               ColourText(host.HostThemeGetColor(host.HostThemeGetCurrent(), L"Accent_color", 0));
    if (kind == PageDialogKind::Batch)
        address += L"&batchRedaction=true&theme=win_native";
    address += L"&isChannelPackage=";
    address += host.HostAppIsChannelPackage() != 0 ? L"true" : L"false";
    if (kind == PageDialogKind::TaskPane && accountPage)
        address += L"&defaultPage=MyPlan";

    config.GetCustomUrl(address);
    url = address;
}

void LogPageReload(AsyncLogger& logger, PageDialogKind kind, const std::wstring& url) {
    if (kind == PageDialogKind::TaskPane)
        logger.Log(kLogInfo, "Brevan Auto redact reload page: %", ToUtf8(url));
    else
        logger.Log(kLogInfo, "Brevan Batch redact Reload page :: %", ToUtf8(url));
}
