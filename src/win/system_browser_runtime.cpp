#include "system_browser_runtime.h"

#include "system_paths.h"
#include "system_runtime_readers.h"

namespace {

#if defined(_WIN64)
constexpr const wchar_t* kLoaderSubfolder = L"\\runtimes\\win-x64\\native";
#else
constexpr const wchar_t* kLoaderSubfolder = L"\\runtimes\\win-x86\\native";
#endif
constexpr const wchar_t* kLoaderName = L"WebView2Loader.dll";
constexpr const char* kCreateEnvironmentEntry = "CreateCoreWebView2EnvironmentWithOptions";

std::wstring FolderOf(const std::wstring& path) {
    const std::size_t separator = path.find_last_of(L"\\/");
    return separator == std::wstring::npos ? std::wstring() : path.substr(0, separator);
}

}  // namespace

std::wstring SystemBrowserRuntime::RuntimeFolder() {
    // Searched once per process, an empty result too.
    static SystemRegistryReader registry;
    static SystemFolderLister folders;
    static RuntimeFolderSearch search(registry, folders);
    return search.Find();
}

std::wstring SystemBrowserRuntime::UserDataFolder() {
    const std::wstring local = LocalAppDataPath();
    return local.empty() ? std::wstring() : local + L"\\Demos\\MfcEdgeDemo";
}

CreateCoreWebView2EnvironmentWithOptionsFn SystemBrowserRuntime::LoadLoader() {
    if (!loader_) {
        const std::wstring folder = FolderOf(ThisModulePath());
        // Without the folder the loader may still be found on the system's own search path.
        if (!folder.empty())
            SetDllDirectoryW((folder + kLoaderSubfolder).c_str());
        loader_.reset(LoadLibraryW(kLoaderName));
        if (!loader_)
            return nullptr;
    }
    return reinterpret_cast<CreateCoreWebView2EnvironmentWithOptionsFn>(
        reinterpret_cast<void*>(GetProcAddress(loader_.get(), kCreateEnvironmentEntry)));
}

void SystemBrowserRuntime::ShowFailure(const std::wstring& text) {
    MessageBoxW(nullptr, text.c_str(), L"Failure", MB_OK | MB_ICONERROR);
}
