#include "webengine_environment.h"

#include <unistd.h>

#include <QByteArray>
#include <QtGlobal>

void PrepareWebEngineEnvironment() {
    if (geteuid() == 0 && qEnvironmentVariableIsEmpty("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", QByteArrayLiteral("1"));
}
