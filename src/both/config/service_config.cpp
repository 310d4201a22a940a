#include "service_config.h"

#include <json/value.h>

#include "bridge/json_text.h"
#include "config/brevan_config.h"
#include "util/utf.h"

namespace {

constexpr int kFetchFailed = 3;

// The text of a `url` member: strings as they are, numbers and booleans in their text form.
// Arrays and objects have none.
bool MemberText(const Json::Value& member, std::wstring& out) {
    if (member.isArray() || member.isObject())
        return false;
    out = FromUtf8(member.asString());
    return true;
}

}  // namespace

int ServiceConfig::GetValue(const std::wstring& key, std::wstring& out) {
    if (!loaded_) {
        const int status = Load();
        if (status != 0)
            return status;
    }
    const auto found = entries_.find(key);
    if (found == entries_.end())
        return kMissing;
    out = found->second;
    return kFound;
}

std::wstring ServiceConfig::DocumentAddress() const {
    const BrevanConfig& config = *config_;
    return config.serverAddress + L"/" + config.apiVersion + L"/" + config.platformName + L"/" +
           config.hostVersion + L"/" + config.language + L"/" + config.apiFileName;
}

int ServiceConfig::Load() {
    loaded_ = false;
    if (!config_)
        return kFetchFailed;
    HttpSettings settings;
    settings.verifyCertificates = !config_->insecureTls;
    std::string body;
    const int status = http_.HttpGet(DocumentAddress(), body, settings);
    if (status != 0)
        return status;
    Json::Value document;
    if (!ParseJson(body, document) || !document.isObject())
        return kNotAccepted;

    entries_.clear();
    const Json::Value& url = document["url"];
    if (url.isObject()) {
        for (const std::string& name : url.getMemberNames()) {
            std::wstring text;
            if (MemberText(url[name], text))
                entries_[L"url@" + FromUtf8(name)] = text;
        }
    }
    // A refused document keeps its entries, but is fetched again at the next need.
    const Json::Value& size = document["size"];
    const bool sizeMatches = size.isIntegral() && size.isUInt64() &&
                             size.asUInt64() == static_cast<uint64_t>(entries_.size());
    if (!sizeMatches || document["dsvConfig"].isNull())
        return kNotAccepted;
    loaded_ = true;
    return 0;
}
