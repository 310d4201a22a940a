#include "shared_library.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace pdfhost {

#ifdef _WIN32

namespace {

// The system's text for the thread's last error, with its number.
std::string LastErrorText() {
    const DWORD code = GetLastError();
    char* text = nullptr;
    const DWORD length = FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<char*>(&text), 0, nullptr);
    std::string message = length != 0 && text != nullptr ? std::string(text, length) : "";
    LocalFree(text);
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r'))
        message.pop_back();
    return message + " (error " + std::to_string(code) + ")";
}

}  // namespace

SharedLibrary::SharedLibrary(const std::filesystem::path& path) {
    handle_ = LoadLibraryW(path.wstring().c_str());
    if (handle_ == nullptr)
        error_ = LastErrorText();
}

void* SharedLibrary::Symbol(const char* name) const {
    if (handle_ == nullptr)
        return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

void SharedLibrary::Close() {
    if (handle_ != nullptr)
        FreeLibrary(static_cast<HMODULE>(handle_));
    handle_ = nullptr;
}

#else

SharedLibrary::SharedLibrary(const std::filesystem::path& path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* reason = dlerror();
        error_ = reason != nullptr ? reason : "unknown error";
    }
}

void* SharedLibrary::Symbol(const char* name) const {
    return handle_ != nullptr ? dlsym(handle_, name) : nullptr;
}

void SharedLibrary::Close() {
    if (handle_ != nullptr)
        dlclose(handle_);
    handle_ = nullptr;
}

#endif

SharedLibrary::~SharedLibrary() {
    Close();
}

}  // namespace pdfhost
