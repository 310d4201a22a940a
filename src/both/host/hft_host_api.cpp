#include "hft_host_api.h"

#include <utility>

HftHostApi::HftHostApi(const HostTableManager* manager, uint32_t pluginId, MissingHandler onMissing)
    : manager_(manager), pluginId_(pluginId), onMissing_(std::move(onMissing)) {}

void HftHostApi::ReportMissing(const char* operation) {
    if (onMissing_ && reported_.insert(operation).second)
        onMissing_(operation);
}
