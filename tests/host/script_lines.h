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

// A compact one-line text of a value, for comparisons and messages.
inline std::string Compact(const Json::Value& value) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    return Json::writeString(builder, value);
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
        return Take();
    }
    // What was printed so far, one value a line, parsed; the output is emptied.
    std::vector<Json::Value> Take() {
        std::vector<Json::Value> lines;
        std::istringstream in(out.str());
        out.str("");
        Json::CharReaderBuilder builder;
        for (std::string line; std::getline(in, line);) {
            std::istringstream one(line);
            std::string errors;
            EXPECT_TRUE(Json::parseFromStream(builder, one, &lines.emplace_back(), &errors))
                << line << errors;
        }
        return lines;
    }
    // The same as compact texts.
    std::vector<std::string> TakeTexts() {
        std::vector<std::string> texts;
        for (const Json::Value& line : Take())
            texts.push_back(Compact(line));
        return texts;
    }
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
