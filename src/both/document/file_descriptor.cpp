#include "file_descriptor.h"

#include <sys/stat.h>

#include "util/utf.h"

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

std::wstring LastPathComponent(const std::wstring& path) {
    const auto slash = path.find_last_of(L'/');
    return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

uint32_t FileSizeLow32(const std::wstring& path) {
    if (path.empty())
        return 0;
    struct stat info {};
    if (::stat(ToUtf8(path).c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return 0;
    return static_cast<uint32_t>(static_cast<uint64_t>(info.st_size) & 0xFFFFFFFFu);
}
