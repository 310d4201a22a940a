#include "network_reachability.h"

#include <QNetworkInformation>

bool SystemReachesInternet() {
    static const bool loaded =
        QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability);
    const QNetworkInformation* information = QNetworkInformation::instance();
    if (!loaded || information == nullptr)
        return true;
    switch (information->reachability()) {
        case QNetworkInformation::Reachability::Online:
        case QNetworkInformation::Reachability::Unknown:
            return true;
        case QNetworkInformation::Reachability::Disconnected:
        case QNetworkInformation::Reachability::Local:
        case QNetworkInformation::Reachability::Site:
            return false;
    }
    return true;
}
