#include "request_fields.h"

#include <cmath>
#include <limits>

#include "bridge/command_params.h"

std::optional<int64_t> JsonInteger(const Json::Value& value) {
    if (value.type() == Json::intValue)
        return static_cast<int64_t>(value.asLargestInt());
    if (value.type() == Json::uintValue) {
        const auto unsignedValue = value.asLargestUInt();
        constexpr auto kMax = static_cast<uint64_t>(std::numeric_limits<int64_t>::max());
        return static_cast<int64_t>(unsignedValue > kMax ? kMax : unsignedValue);
    }
    return std::nullopt;
}

std::optional<float> JsonFloat(const Json::Value& value) {
    double number = 0;
    switch (value.type()) {
        case Json::intValue:
            number = static_cast<double>(value.asLargestInt());
            break;
        case Json::uintValue:
            number = static_cast<double>(value.asLargestUInt());
            break;
        case Json::realValue:
            number = value.asDouble();
            break;
        case Json::booleanValue:
            number = value.asBool() ? 1.0 : 0.0;
            break;
        default:
            return std::nullopt;
    }
    if (std::isnan(number))
        return std::nullopt;
    constexpr double kMax = std::numeric_limits<float>::max();
    return static_cast<float>(std::fmax(-kMax, std::fmin(kMax, number)));
}

std::optional<int64_t> ListIndexOf(const Json::Value& params) {
    const std::optional<int64_t> index = JsonInteger(Member(params, "index"));
    if (!index || *index < 0)
        return std::nullopt;
    return index;
}

bool StartsWith(const std::wstring& text, const std::wstring& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}
