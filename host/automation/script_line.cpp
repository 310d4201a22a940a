#include "automation/script_line.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <json/reader.h>

#include "json_depth.h"

namespace pdfhost {
namespace {

bool ParseObject(const std::string& text, Json::Value& value, std::string& error) {
    if (!JsonDepthWithin(text)) {
        error = "nested deeper than " + std::to_string(kMaxJsonDepth) + " levels";
        return false;
    }
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    if (!reader->parse(text.data(), text.data() + text.size(), &value, &error))
        return false;
    if (!value.isObject()) {
        error = "expected a JSON object";
        return false;
    }
    return true;
}

// jsoncpp's report, first error only, on one line: "Line 1, Column 2: Syntax error: ...".
std::string FirstError(const std::string& report) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start < report.size() && parts.size() < 2) {
        std::size_t end = report.find('\n', start);
        if (end == std::string::npos)
            end = report.size();
        std::string part = report.substr(start, end - start);
        const std::size_t text = part.find_first_not_of("* ");
        if (text != std::string::npos)
            parts.push_back(part.substr(text));
        start = end + 1;
    }
    if (parts.empty())
        return "not JSON";
    return parts.size() == 1 ? parts[0] : parts[0] + ": " + parts[1];
}

bool IsBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r\n") == std::string::npos;
}

ScriptLine Refused(std::string text) {
    ScriptLine line;
    line.kind = ScriptLine::Kind::kError;
    line.text = std::move(text);
    return line;
}

}  // namespace

ScriptLine ReadScriptLine(const std::string& text) {
    if (IsBlank(text))
        return {};
    ScriptLine line;
    std::string error;
    if (!ParseObject(text, line.object, error))
        return Refused("malformed line: " + FirstError(error));
    const std::pair<const char*, ScriptLine::Kind> kinds[] = {{"post", ScriptLine::Kind::kPost},
                                                              {"host", ScriptLine::Kind::kHost}};
    for (const auto& [key, kind] : kinds) {
        if (!line.object.isMember(key))
            continue;
        if (!line.object[key].isString())
            return Refused("\"" + std::string(key) + "\" needs a string");
        line.kind = kind;
        line.text = line.object[key].asString();
        return line;
    }
    return Refused("a line needs \"post\" or \"host\"");
}

}  // namespace pdfhost
