// DownloadJob: openFile's work for one file — download into a folder of its own under the
// temporary folder, register the file as a scratch copy and open it in the editor.
#pragma once

#include <cstdint>
#include <string>

#include "host/host_abi.h"

struct DocumentServices;

class DownloadJob {
  public:
    DownloadJob(const DocumentServices& services, std::wstring fileUrl, std::wstring fileName,
                std::wstring aiFileId)
        : services_(services),
          fileUrl_(std::move(fileUrl)),
          fileName_(std::move(fileName)),
          aiFileId_(std::move(aiFileId)) {}

    // 0 with the opened document in `doc`, or the code of the step that failed: 400019 (the
    // folder), 300006 (the download), 300007 (the editor's open).
    int32_t Run(HostDoc& doc);

  private:
    const DocumentServices& services_;
    std::wstring fileUrl_;
    std::wstring fileName_;
    std::wstring aiFileId_;
};
