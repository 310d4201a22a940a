// Writes JSON objects as compact lines (UTF-8, one object per line), flushing after each, so that
// a driver reading the other end sees every line as soon as it happens.
#pragma once

#include <memory>
#include <ostream>

#include <json/value.h>
#include <json/writer.h>

namespace pdfhost {

class JsonLineWriter {
  public:
    explicit JsonLineWriter(std::ostream& out);
    void Write(const Json::Value& line);

  private:
    std::ostream& out_;
    std::unique_ptr<Json::StreamWriter> writer_;
};

}  // namespace pdfhost
