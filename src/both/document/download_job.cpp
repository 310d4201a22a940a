#include "document/download_job.h"

#include <filesystem>
#include <system_error>

#include "app/platform_services.h"
#include "bridge/error_codes.h"
#include "config/brevan_config.h"
#include "document/document_registry.h"
#include "document/document_services.h"
#include "document/download_status.h"
#include "document/progress_bar_host.h"
#include "util/confined_files.h"
#include "util/utf.h"

namespace {

namespace fs = std::filesystem;

// Empties the download folder, or makes it. Only a folder inside the temporary folder is ever
// emptied.
bool PrepareFolder(const fs::path& temp, const fs::path& folder) {
    std::error_code error;
    if (!RemoveInside(temp, folder, true))
        return false;
    return fs::create_directory(folder, error) && !error;
}

}  // namespace

std::wstring LastNameComponent(const std::wstring& fileName) {
    const auto separator = fileName.find_last_of(L"/\\");
    return separator == std::wstring::npos ? fileName : fileName.substr(separator + 1);
}

int32_t DownloadJob::Run(HostDoc& doc) {
    if (!IsPlainFileName(aiFileId_))
        return err::kDownloadFolderFailed;
    const std::wstring tempFolder = services_.platform.TempFolder();
    const fs::path temp(ToUtf8(tempFolder));
    const fs::path folder = temp / ToUtf8(aiFileId_);
    if (!PrepareFolder(temp, folder))
        return err::kDownloadFolderFailed;

    const std::wstring name = LastNameComponent(fileName_);
    if (!IsPlainFileName(name))
        return err::kDownloadFailed;
    const fs::path target = folder / ToUtf8(name);
    const std::wstring path = FromUtf8(target.string());

    HttpSettings settings;
    settings.verifyCertificates = !(services_.config && services_.config->insecureTls);
    DownloadStatus status(services_.progressBar.get());
    const bool downloaded = services_.platform.DownloadToFile(fileUrl_, path, status, settings);
    std::error_code error;
    if (!downloaded || !fs::exists(target, error) || fs::is_directory(target, error)) {
        if (services_.progressBar)
            services_.progressBar->close();
        return err::kDownloadFailed;
    }

    // The copy is a scratch file: it goes when the plug-in unloads.
    DocumentRegistry& registry = *services_.documents.registry();
    const std::wstring id = registry.newIdForPath(path);
    registry.bindScratchPath(id, path, tempFolder);
    registry.bindAiFileId(id, aiFileId_);

    doc = services_.host.HostDocOpen(path.c_str(), L"", 1, 0);
    if (doc == nullptr) {
        registry.erase(id);
        return err::kDownloadOpenFailed;
    }
    registry.bindDoc(id, doc);
    return err::kOk;
}
