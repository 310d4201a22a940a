#include "json_text.h"

#include <exception>

#include "host/json_depth.h"

// The classic reader and fast writer are marked deprecated by jsoncpp in favour of the builder
// API, but they define the wire format of the bridge, so they are used here and only here.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <json/reader.h>
#include <json/writer.h>

bool ParseJson(std::string_view text, Json::Value& out) {
    if (!JsonDepthWithin(text)) {
        out = Json::Value();
        return false;
    }
    try {
        Json::Reader reader;
        return reader.parse(text.data(), text.data() + text.size(), out, false);
    } catch (const std::exception&) {
        out = Json::Value();
        return false;
    }
}

std::string WriteJson(const Json::Value& value) {
    Json::FastWriter writer;
    return writer.write(value);
}

std::string WriteStyledJson(const Json::Value& value) {
    Json::StyledWriter writer;
    return writer.write(value);
}
#pragma GCC diagnostic pop
