// Reading what scripted mode printed: one JSON object per line.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include <json/reader.h>
#include <json/writer.h>

namespace pdfhost::testing {

// Every line of `text`, parsed.
inline std::vector<Json::Value> ParseScriptLines(const std::string& text) {
    std::vector<Json::Value> lines;
    std::istringstream in(text);
    std::string line;
    Json::CharReaderBuilder builder;
    while (std::getline(in, line)) {
        Json::Value value;
        std::string errors;
        std::istringstream one(line);
        EXPECT_TRUE(Json::parseFromStream(builder, one, &value, &errors)) << line << errors;
        lines.push_back(value);
    }
    return lines;
}

// What `out` holds so far, parsed; `out` is emptied.
inline std::vector<Json::Value> TakeScriptLines(std::ostringstream& out) {
    std::vector<Json::Value> lines = ParseScriptLines(out.str());
    out.str("");
    return lines;
}

// A compact one-line text of a value, for comparisons and messages.
inline std::string Compact(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return Json::writeString(builder, value);
}

}  // namespace pdfhost::testing
