// Reading what scripted mode printed: one JSON object per line.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include <json/reader.h>
#include <json/writer.h>

#include "automation/script_session.h"

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

// The compact texts of what `out` holds so far; `out` is emptied.
inline std::vector<std::string> TakeCompact(std::ostringstream& out) {
    std::vector<std::string> texts;
    for (const Json::Value& line : TakeScriptLines(out))
        texts.push_back(Compact(line));
    return texts;
}

// A scripted session over a host, printing into a string the test reads.
class Scripted {
  public:
    explicit Scripted(HostApp& app) : session(app, out) {}
    // Handles the lines and gives what they printed, parsed; earlier output is dropped.
    std::vector<Json::Value> Run(std::initializer_list<std::string> lines) {
        out.str("");
        for (const std::string& line : lines)
            session.HandleLine(line);
        return ParseScriptLines(out.str());
    }
    std::vector<Json::Value> Take() { return TakeScriptLines(out); }
    std::vector<std::string> TakeTexts() { return TakeCompact(out); }
    // Queues the answer to the next dialog of `kind`, as an "answer" line does.
    void Answer(const std::string& kind, const Json::Value& value) {
        Json::Value line(Json::objectValue);
        line["host"] = "answer";
        line["dialog"] = kind;
        line["value"] = value;
        session.HandleLine(Compact(line));
    }

    std::ostringstream out;
    ScriptSession session;
};

}  // namespace pdfhost::testing
