#include "engine/atomic_save.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "engine/error.h"
#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

// Mode for a file that replaces `path`: the old file's, or what a new file would get.
mode_t ModeFor(const std::string& path) {
    struct stat old {};
    if (::stat(path.c_str(), &old) == 0)
        return old.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// Removes the temporary file unless it was renamed into place.
class TempFile {
  public:
    explicit TempFile(std::string name) : name_(std::move(name)) {}
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() {
        if (!name_.empty())
            std::remove(name_.c_str());
    }
    const std::string& name() const { return name_; }
    void Keep() { name_.clear(); }

  private:
    std::string name_;
};

TempFile CreateTempBeside(const std::string& path) {
    std::string pattern = path + ".saving-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    const int fd = ::mkstemp(name.data());
    if (fd < 0)
        throw Error("cannot save " + path + ": " + std::strerror(errno));
    ::close(fd);
    return TempFile(name.data());
}

// So that the rename never exposes a file whose bytes are not yet on disk.
void FlushToDisk(const std::string& name) {
    const int fd = ::open(name.c_str(), O_RDONLY);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

}  // namespace

void SaveReplacing(fz_context* ctx, pdf_document* doc, const std::string& path,
                   const pdf_write_options& options) {
    if (path.empty())
        throw Error("cannot save: no file name");
    const mode_t mode = ModeFor(path);
    TempFile temp = CreateTempBeside(path);
    const std::string what = "cannot save " + path;
    CallMupdf(ctx, what, [&] { pdf_save_document(ctx, doc, temp.name().c_str(), &options); });
    FlushToDisk(temp.name());
    if (::chmod(temp.name().c_str(), mode) != 0 ||
        ::rename(temp.name().c_str(), path.c_str()) != 0) {
        throw Error(what + ": " + std::strerror(errno));
    }
    temp.Keep();
}

}  // namespace pdfhost::engine
