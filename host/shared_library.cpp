#include "shared_library.h"

#include <dlfcn.h>

namespace pdfhost {

SharedLibrary::SharedLibrary(const std::filesystem::path& path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* reason = dlerror();
        error_ = reason != nullptr ? reason : "unknown error";
    }
}

SharedLibrary::~SharedLibrary() {
    Close();
}

void* SharedLibrary::Symbol(const char* name) const {
    return handle_ != nullptr ? dlsym(handle_, name) : nullptr;
}

void SharedLibrary::Close() {
    if (handle_ != nullptr)
        dlclose(handle_);
    handle_ = nullptr;
}

}  // namespace pdfhost
