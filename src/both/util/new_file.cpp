#include "new_file.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#endif

OwnedFile CreateNewFile(const std::filesystem::path& path) {
#ifdef _WIN32
    // The wide call, so that any name can be made; exclusive creation through the descriptor.
    const int descriptor =
        _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
    if (descriptor < 0)
        return nullptr;
    OwnedFile file(_fdopen(descriptor, "wb"));
    if (!file)
        _close(descriptor);
    return file;
#else
    return OwnedFile(std::fopen(path.c_str(), "wbx"));
#endif
}
