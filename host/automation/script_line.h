// One input line of scripted mode, read and sorted before anything acts on it: blank, a message
// for the page channel, a host command, or a line to answer with an error.
#pragma once

#include <string>

#include <json/value.h>

namespace pdfhost {

struct ScriptLine {
    enum class Kind { kBlank, kPost, kHost, kError };
    Kind kind = Kind::kBlank;
    // The line's object (kPost, kHost).
    Json::Value object;
    // The message of kPost, the command name of kHost, the error text of kError.
    std::string text;
};

// Reads one line: a JSON object (strict, nested no deeper than the JSON limit) with a string
// "post" or a string "host". Blank lines are kBlank; anything else is kError with the text of
// the error line.
ScriptLine ReadScriptLine(const std::string& text);

}  // namespace pdfhost
