// DownloadStatus: shows the progress of openFile's download in the plug-in's progress window.
#pragma once

#include "app/platform_services.h"

class ProgressBarHost;

class DownloadStatus final : public DownloadProgress {
  public:
    // `bar` may be null: then nothing is shown.
    explicit DownloadStatus(ProgressBarHost* bar) : bar_(bar) {}

    // Begin (4) shows the download bar, begin and data (5) move it to the share received, end (6)
    // takes it down. Other statuses are ignored.
    void OnProgress(unsigned long progress, unsigned long maximum, int status) override;

  private:
    ProgressBarHost* bar_;
};
