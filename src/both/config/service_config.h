// ServiceConfig: the process-wide cache of the service document that the account server publishes
// for this plug-in ("txdfApi.json"). It is fetched on first need and again on every need until
// one fetch has been accepted; its `url` members hold the page address template and the values
// handed to the page.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "account/http_client.h"

class BrevanConfig;

class ServiceConfig {
  public:
    static constexpr int kFound = 0;
    static constexpr int kNotAccepted = 6;  // not JSON, or `size` / `dsvConfig` refuse it
    static constexpr int kMissing = 7;

    // Entry keys: "url@" + the member name of the document's `url` object.
    static constexpr const wchar_t* kPageTemplate = L"url@qvd_brevan_plugin_domain";
    static constexpr const wchar_t* kPreproductionPageTemplate =
        L"url@qvd_brevan_plugin_domain_preproduction";
    static constexpr const wchar_t* kServiceDomain = L"url@qvd_brevan_domain";
    static constexpr const wchar_t* kEngine = L"url@qvd_brevan_aig";
    static constexpr const wchar_t* kEngineKey = L"url@qvd_brevan_aig_key";
    static constexpr const wchar_t* kAccountServer = L"url@qvd_domain";

    // `config` is the owner's configuration, which may be gone (then nothing is fetched).
    ServiceConfig(const std::unique_ptr<BrevanConfig>& config, HttpClient& http)
        : config_(config), http_(http) {}

    // Loads the document unless it is loaded, then looks the key up: kFound with the value in
    // `out`, kMissing when the key isn't there, or the load's status (`out` untouched).
    int GetValue(const std::wstring& key, std::wstring& out);

    // Fetches the document now, whether or not one was loaded: 0 when it was accepted, the
    // HTTP status of a failed fetch, or kNotAccepted.
    int Load();

    // <server>/<api version>/<platform>/<host version>/<language>/<file name>
    std::wstring DocumentAddress() const;

    bool loaded() const { return loaded_; }
    const std::map<std::wstring, std::wstring>& entries() const { return entries_; }

  private:
    const std::unique_ptr<BrevanConfig>& config_;
    HttpClient& http_;
    bool loaded_ = false;
    std::map<std::wstring, std::wstring> entries_;
};
