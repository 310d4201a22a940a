// The machine's registry and folders, as the browser runtime search reads them.
#pragma once

#include "config/runtime_folder_search.h"

class SystemRegistryReader final : public RegistryReader {
  public:
    bool CanOpen(const std::wstring& key) override;
    std::optional<std::wstring> ReadString(const std::wstring& key, const std::wstring& name,
                                           std::size_t bufferBytes) override;
};

class SystemFolderLister final : public FolderLister {
  public:
    std::vector<std::wstring> Directories(const std::wstring& folder) override;
    int NativeArchitecture() override;
    std::wstring LocalAppDataFolder() override;
};

// The user's local application data folder; empty when the system can't say.
std::wstring LocalAppDataPath();
