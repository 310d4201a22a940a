#include "internet_connection.h"

#include "app/platform_services.h"
#include "config/brevan_config.h"

bool IsConnectedToInternet(const BrevanConfig* config, PlatformServices& platform) {
    if (config != nullptr && config->root.isObject()) {
        const Json::Value& fixed = config->root[kInternetConnectionKey];
        if (fixed.isBool())
            return fixed.asBool();
    }
    return platform.IsConnectedToInternet();
}
