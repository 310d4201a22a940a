#include "url_download.h"

#include <windows.h>
// after windows.h, which it needs
#include <wininet.h>

#include "download_status.h"

namespace {

constexpr DWORD kDownloadStatusOk = 200;

// The file is there and is not a folder.
bool IsFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace

bool DownloadUrlToFile(const std::wstring& url, const std::wstring& path,
                       DownloadProgress& progress) {
    DownloadStatus status(progress);
    DeleteUrlCacheEntryW(url.c_str());
    const HRESULT result = URLDownloadToFileW(nullptr, url.c_str(), path.c_str(), 0, &status);
    DeleteUrlCacheEntryW(url.c_str());
    // A server's error page is no download: over http(s) only the status 200 counts.
    const DWORD code = status.ResponseCode();
    if (SUCCEEDED(result) && (code == 0 || code == kDownloadStatusOk) && IsFile(path))
        return true;
    if (IsFile(path))
        DeleteFileW(path.c_str());
    return false;
}
