#include "web_view_bridge.h"

void WebViewBridge::postMessage(const QString& text, bool isString) {
    handler_(text, isString);
}
