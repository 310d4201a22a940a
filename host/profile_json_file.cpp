#include "profile_json_file.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>

#include <json/reader.h>
#include <json/writer.h>

#include "json_depth.h"

namespace pdfhost {

Json::Value ReadProfileJson(const std::filesystem::path& file, const char* what) {
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return Json::Value(Json::objectValue);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    Json::CharReaderBuilder builder;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    std::string errors = "nested too deep";
    if (!JsonDepthWithin(text) ||
        !reader->parse(text.data(), text.data() + text.size(), &root, &errors) ||
        !root.isObject()) {
        std::cerr << "pdfhost: ignoring unreadable " << what << " file " << file << ": " << errors
                  << '\n';
        return Json::Value(Json::objectValue);
    }
    return root;
}

void WriteProfileJson(const std::filesystem::path& file, const Json::Value& root,
                      const char* what) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    builder["emitUTF8"] = true;
    std::filesystem::path temporary = file;
    temporary += ".tmp";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out << Json::writeString(builder, root) << '\n';
        if (!out) {
            std::cerr << "pdfhost: cannot write " << what << " file " << temporary << '\n';
            return;
        }
    }
    std::error_code error;
    std::filesystem::rename(temporary, file, error);
    if (error)
        std::cerr << "pdfhost: cannot replace " << file << ": " << error.message() << '\n';
}

}  // namespace pdfhost
