// The search for the folder of an installed browser runtime on Windows: the uninstall entries of
// the registry first, then a scan of the installation folder, for the runtime and then for the
// full browser. The registry and the folders are reached through the two readers below, so that
// the order of the attempts and the rules for each can be checked anywhere.
#pragma once

#include <optional>
#include <string>
#include <vector>

// Read access to HKEY_LOCAL_MACHINE.
class RegistryReader {
  public:
    virtual ~RegistryReader() = default;
    // Whether the key can be opened for reading.
    virtual bool CanOpen(const std::wstring& key) = 0;
    // The string value `name` of the key, offering a buffer of `bufferBytes` bytes; nothing when
    // the value can't be read into it.
    virtual std::optional<std::wstring> ReadString(const std::wstring& key,
                                                   const std::wstring& name,
                                                   std::size_t bufferBytes) = 0;
};

// The machine's folders.
class FolderLister {
  public:
    virtual ~FolderLister() = default;
    // The names of the directories in `folder`, in the order the system lists them.
    virtual std::vector<std::wstring> Directories(const std::wstring& folder) = 0;
    // The native processor architecture code of the system.
    virtual int NativeArchitecture() = 0;
    // The user's local application data folder.
    virtual std::wstring LocalAppDataFolder() = 0;
};

class RuntimeFolderSearch {
  public:
    RuntimeFolderSearch(RegistryReader& registry, FolderLister& folders)
        : registry_(registry), folders_(folders) {}

    // The folder, found once and then kept, an empty result too. The attempts, each only while
    // the earlier ones found nothing: registry for the runtime, scan for the runtime, registry
    // for the browser, scan for the browser.
    const std::wstring& Find();

    // Whether a found folder can start the embedded browser: a full browser's folder can't.
    static bool IsUsable(const std::wstring& folder);

  private:
    enum class Kind { Runtime, Browser };

    std::wstring FromRegistry(Kind kind);
    std::wstring FromFolderScan(Kind kind);

    RegistryReader& registry_;
    FolderLister& folders_;
    std::optional<std::wstring> found_;
};
