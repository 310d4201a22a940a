// RAII owner of a loaded library: dlopen on Linux, LoadLibraryW on Windows.
#pragma once

#include <filesystem>
#include <string>

namespace pdfhost {

class SharedLibrary {
  public:
    // Loads the library; on failure IsLoaded() is false and Error() tells why.
    explicit SharedLibrary(const std::filesystem::path& path);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    bool IsLoaded() const { return handle_ != nullptr; }
    const std::string& Error() const { return error_; }
    // The address of an exported symbol, or null.
    void* Symbol(const char* name) const;
    void Close();

  private:
    void* handle_ = nullptr;
    std::string error_;
};

}  // namespace pdfhost
