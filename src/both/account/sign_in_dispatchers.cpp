#include "sign_in_dispatchers.h"

#include "account/account_services.h"
#include "account/sign_in_table.h"
#include "account/url_template.h"
#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "bridge/json_text.h"
#include "config/brevan_config.h"
#include "config/service_config.h"
#include "host/host_string.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

constexpr const wchar_t* kUserTokenServiceKey = L"url@qvd_brevan_user_jwt";
constexpr const wchar_t* kTenantSection = L"TXDFServer";
constexpr const wchar_t* kTenantKey = L"EnterpriseTenantID";
// How much of a token a log line may show.
constexpr std::size_t kShownTokenCharacters = 4;

int ServiceValue(const AccountServices& services, const wchar_t* key, std::wstring& out) {
    return services.serviceConfig ? services.serviceConfig->GetValue(key, out)
                                  : ServiceConfig::kMissing;
}

std::wstring BaseAddress(const AccountServices& services) {
    return services.config ? services.config->serverAddress : std::wstring();
}

Json::Value AccountServerData(const std::wstring& domain) {
    Json::Value data(Json::objectValue);
    data["qvd_domain"] = ToUtf8(domain);
    return data;
}

std::string MaskedToken(const std::wstring& token) {
    return ToUtf8(token.substr(0, kShownTokenCharacters)) + "...";
}

bool IsIntegerZero(const Json::Value& value) {
    return (value.type() == Json::intValue || value.type() == Json::uintValue) &&
           value.asLargestInt() == 0;
}

HttpSettings HttpSettingsOf(const AccountServices& services) {
    HttpSettings settings;
    if (services.config)
        settings.verifyCertificates = !services.config->insecureTls;
    return settings;
}

}  // namespace

Json::Value LoginInDispatcher::Run() {
    const SignInTable login = services_.signInTable();
    if (!login.ShowSignIn())
        return Fail(err::kSigninFails);
    if (!login.IsSignedIn(BaseAddress(services_)))
        return Fail(err::kSigninFails);
    return MakeResult(err::kOk, Json::Value());
}

Json::Value GetUserDispatcher::Run() {
    std::wstring domain;
    if (ServiceValue(services_, ServiceConfig::kAccountServer, domain) != ServiceConfig::kFound)
        return MakeResult(err::kNoAccountServer, AccountServerData(L""));

    const SignInTable login = services_.signInTable();
    AccountUser user;
    if (!login.GetUserInfo(domain, user)) {
        Json::Value data = AccountServerData(domain);
        data["message"] = "GetUserInfo error";
        return MakeResult(err::kNoUserInfo, data);
    }
    std::wstring token;
    login.GetToken(domain, token);
    if (token.empty())
        return MakeResult(err::kNoToken, AccountServerData(domain));

    HostWide tenant(services_.host);
    services_.host.HostPrefGetString(kTenantSection, kTenantKey, tenant);

    Json::Value info(Json::objectValue);
    info["enterpriseTenantID"] = ToUtf8(tenant.Text());
    info["email"] = ToUtf8(user.email);
    info["username"] = ToUtf8(user.firstName + user.lastName);
    info["firstname"] = ToUtf8(user.firstName);
    info["lastname"] = ToUtf8(user.lastName);
    info["userid"] = ToUtf8(user.userId);
    info["token"] = ToUtf8(token);
    Json::Value data(Json::objectValue);
    data["info"] = info;
    return MakeResult(err::kOk, data);
}

Json::Value GetUserJWTDispatcher::Run() {
    std::wstring domain;
    if (ServiceValue(services_, ServiceConfig::kAccountServer, domain) != ServiceConfig::kFound)
        return MakeResult(err::kNoAccountServer, AccountServerData(L""));

    std::wstring token;
    services_.signInTable().GetToken(domain, token);
    if (token.empty()) {
        Json::Value data = AccountServerData(L"");
        data["message"] = "get Token result is empty";
        return MakeResult(err::kNoToken, data);
    }
    // The token is a secret: the log shows only its start.
    services_.logger.Log(kLogInfo, "Get GetUserEmailAndToken : token%  ", MaskedToken(token));

    std::wstring pattern;
    if (ServiceValue(services_, kUserTokenServiceKey, pattern) != ServiceConfig::kFound) {
        Json::Value data(Json::objectValue);
        data["message"] = "get qvd_brevan_user_jwt from webservice error";
        return MakeResult(err::kNoTokenService, data);
    }
    const std::wstring url = FillTemplate(pattern, {token, L""});

    std::string body;
    if (services_.http.HttpGet(url, body, HttpSettingsOf(services_)) != 0) {
        Json::Value data(Json::objectValue);
        data["url"] = ToUtf8(url);
        return MakeResult(err::kTokenRequestFailed, data);
    }
    Json::Value response;
    if (!ParseJson(body, response))
        return Fail(err::kNoJson);

    const Json::Value& ret = Member(response, "ret");
    services_.logger.Log(kLogInfo, "GetPlatform()->SendRequest  response  value: %  ",
                         WriteJson(ret));
    const Json::Value& jwt = Member(Member(response, "data"), "jwtResult");
    if (IsIntegerZero(ret) && jwt.isString() && !jwt.asString().empty()) {
        Json::Value data(Json::objectValue);
        data["jwtResult"] = jwt;
        return MakeResult(err::kOk, data);
    }
    Json::Value data(Json::objectValue);
    data["url"] = ToUtf8(url);
    data["jwtResult"] = WriteJson(response);
    return MakeResult(err::kEmptyToken, data);
}
