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
#include "util/wide_path.h"

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

int32_t DownloadJob::Run(HostDoc& doc) {
    if (!IsPlainFileName(aiFileId_))
        return err::kDownloadFolderFailed;
    const std::wstring tempFolder = services_.platform.TempFolder();
    const fs::path temp = PathOfWide(tempFolder);
    const fs::path folder = temp / PathOfWide(aiFileId_);
    if (!PrepareFolder(temp, folder))
        return err::kDownloadFolderFailed;

    // Only the last component of the page's name, so that no name leads out of the folder.
    const std::wstring name = LastPathComponent(fileName_);
    if (!IsPlainFileName(name))
        return err::kDownloadFailed;
    const fs::path target = folder / PathOfWide(name);
    const std::wstring path = WideOfPath(target);

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
