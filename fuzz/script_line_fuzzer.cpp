// One input line of pdfhost's scripted mode: the input is the line. Whatever it holds, it is
// sorted into blank, post, host or error, and an error line can be written back out.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "automation/json_line_writer.h"
#include "automation/script_line.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using pdfhost::ScriptLine;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const ScriptLine line = pdfhost::ReadScriptLine(text);
    switch (line.kind) {
        case ScriptLine::Kind::kBlank:
            if (text.find_first_not_of(" \t\r\n") != std::string::npos)
                std::abort();
            break;
        case ScriptLine::Kind::kPost:
        case ScriptLine::Kind::kHost:
            if (!line.object.isObject())
                std::abort();
            break;
        case ScriptLine::Kind::kError: {
            // The error goes back to the driver as one JSON line.
            std::ostringstream out;
            Json::Value answer(Json::objectValue);
            answer["error"] = line.text;
            pdfhost::JsonLineWriter(out).Write(answer);
            if (out.str().find('\n') + 1 != out.str().size())
                std::abort();
            break;
        }
    }
    return 0;
}
