#include "internet_connection.h"

#include "app/brevan.h"
#include "config/brevan_config.h"

bool IsConnectedToInternet(Brevan& app) {
    if (app.config && app.config->root.isObject()) {
        const Json::Value& fixed = app.config->root[kInternetConnectionKey];
        if (fixed.isBool())
            return fixed.asBool();
    }
    return app.platform().IsConnectedToInternet();
}
