#include "curl_download.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "curl_http.h"
#include "util/utf.h"

namespace {

namespace fs = std::filesystem;

// Progress statuses of a download.
constexpr int kBeginDownload = 4;
constexpr int kDownloadingData = 5;
constexpr int kEndDownload = 6;

// A hidden file beside the target that takes the body; it goes away unless it was moved into
// place.
class PartFile {
  public:
    explicit PartFile(const fs::path& target) {
        const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
        std::string pattern = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
        fd_ = mkstemp(pattern.data());
        if (fd_ >= 0)
            path_ = pattern;
    }
    ~PartFile() {
        CloseFd();
        if (!path_.empty()) {
            std::error_code ignored;
            fs::remove(path_, ignored);
        }
    }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    bool IsOpen() const { return fd_ >= 0; }

    bool Write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
            if (written < 0) {
                if (errno == EINTR)
                    continue;
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

    // Closes the file and renames it to `target`, replacing what is there.
    bool MoveTo(const fs::path& target) {
        if (!CloseFd())
            return false;
        std::error_code error;
        fs::rename(path_, target, error);
        if (error)
            return false;
        path_.clear();
        return true;
    }

  private:
    bool CloseFd() {
        if (fd_ < 0)
            return true;
        const int result = ::close(fd_);
        fd_ = -1;
        return result == 0;
    }

    int fd_ = -1;
    fs::path path_;
};

// Writes the body to the part file and reports begin and data to the caller's progress.
class ProgressFileSink final : public HttpBodySink {
  public:
    ProgressFileSink(PartFile& file, DownloadProgress& progress)
        : file_(file), progress_(progress) {}

    bool Begin(std::uint64_t length) override {
        total_ = length;
        progress_.OnProgress(0, Total(), kBeginDownload);
        return true;
    }
    bool Write(std::string_view piece) override {
        if (!file_.Write(piece))
            return false;
        received_ += piece.size();
        progress_.OnProgress(Received(), Total(), kDownloadingData);
        return true;
    }

    unsigned long Received() const { return static_cast<unsigned long>(received_); }
    unsigned long Total() const { return static_cast<unsigned long>(total_); }

  private:
    PartFile& file_;
    DownloadProgress& progress_;
    std::uint64_t total_ = 0;
    std::uint64_t received_ = 0;
};

bool Download(const std::wstring& url, const fs::path& target, DownloadProgress& progress,
              const HttpSettings& settings) {
    PartFile part(target);
    if (!part.IsOpen())
        return false;
    ProgressFileSink sink(part, progress);
    CurlHttp http(url, L"", settings);
    http.SetBodySink(&sink);
    if (!http.Send() || !part.MoveTo(target))
        return false;
    progress.OnProgress(sink.Received(), sink.Total(), kEndDownload);
    return true;
}

}  // namespace

bool DownloadUrlToFile(const std::wstring& url, const std::wstring& path,
                       DownloadProgress& progress, const HttpSettings& settings) {
    const fs::path target(ToUtf8(path));
    if (Download(url, target, progress, settings))
        return true;
    std::error_code ignored;
    if (!fs::is_directory(fs::symlink_status(target, ignored)))
        fs::remove(target, ignored);
    return false;
}
