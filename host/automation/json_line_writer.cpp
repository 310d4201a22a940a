#include "automation/json_line_writer.h"

namespace pdfhost {

JsonLineWriter::JsonLineWriter(std::ostream& out) : out_(out) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    builder["commentStyle"] = "None";
    writer_.reset(builder.newStreamWriter());
}

void JsonLineWriter::Write(const Json::Value& line) {
    writer_->write(line, &out_);
    out_ << '\n';
    out_.flush();
}

}  // namespace pdfhost
