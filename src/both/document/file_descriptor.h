// The file descriptor: the JSON object by which the plug-in tells the page of a document. It always
// travels inside an array, and the page hands an element back as `file`.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>

struct FileDescriptor {
    std::wstring id;
    std::wstring aiFileId;
    std::wstring name;
    uint32_t size = 0;
    bool isCurrentDoc = false;
    std::wstring drive = L"local";
    std::wstring filePath;
    std::wstring accountId;
    std::optional<std::wstring> account;  // written only when set

    Json::Value ToJson() const;
};

// The low 32 bits of the size of the file on disk; 0 when it cannot be read.
uint32_t FileSizeLow32(const std::wstring& path);
