// What the account commands and the account-change notice use of the plug-in, handed to them by
// the application once the host is bound.
#pragma once

#include <functional>
#include <memory>

#include "account/http_client.h"
#include "account/sign_in_table.h"
#include "bridge/page_event_sink.h"
#include "host/host_api.h"

class AsyncLogger;
class BrevanConfig;
class ServiceConfig;

struct AccountServices {
    HostApi& host;
    HttpClient& http;
    AsyncLogger& logger;
    PageEventSink& page;
    // Null while the plug-in is not initialised.
    const std::unique_ptr<BrevanConfig>& config;
    const std::unique_ptr<ServiceConfig>& serviceConfig;
    // The host's sign-in table found at import, if any.
    std::function<SignInTable()> signInTable;
    // Reloads the page of the active task pane.
    std::function<void(bool rebuild)> reloadPanes;
};
