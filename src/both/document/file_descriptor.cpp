#include "file_descriptor.h"

#include <filesystem>
#include <system_error>

#include "util/utf.h"
#include "util/wide_path.h"

Json::Value FileDescriptor::ToJson() const {
    Json::Value object(Json::objectValue);
    object["id"] = ToUtf8(id);
    object["aiFileId"] = ToUtf8(aiFileId);
    object["name"] = ToUtf8(name);
    object["size"] = Json::UInt(size);
    object["isCurrentDoc"] = isCurrentDoc;
    object["drive"] = ToUtf8(drive);
    object["filePath"] = ToUtf8(filePath);
    object["account_id"] = ToUtf8(accountId);
    if (account)
        object["account"] = ToUtf8(*account);
    return object;
}

uint32_t FileSizeLow32(const std::wstring& path) {
    if (path.empty())
        return 0;
    const std::filesystem::path file = PathOfWide(path);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return 0;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    return error ? 0 : static_cast<uint32_t>(size & 0xFFFFFFFFu);
}
