#include "profile_json_file.h"

#include <fstream>
#include <iostream>
#include <string>
#include <system_error>

#include <json/reader.h>
#include <json/writer.h>

namespace pdfhost {

Json::Value ReadProfileJson(const std::filesystem::path& file, const char* what) {
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return Json::Value(Json::objectValue);
    Json::CharReaderBuilder builder;
    Json::Value root;
    std::string errors;
    if (!Json::parseFromStream(builder, in, &root, &errors) || !root.isObject()) {
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
