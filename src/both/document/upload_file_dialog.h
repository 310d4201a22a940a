// CUploadFileDialog: the platform's file-open dialog, attached to the host so that the host can
// offer its cloud places in it and say afterwards which of its plug-ins served the selection.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/platform_services.h"
#include "host/host_api.h"

class CUploadFileDialog {
  public:
    CUploadFileDialog(HostApi& host, PlatformServices& platform,
                      const FileDialogSettings& settings);

    // Shows the dialog modally; true when the user ended it with OK.
    bool DoModal() { return dialog_->Run(); }
    std::vector<std::wstring> Paths() { return dialog_->Paths(); }
    // The host plug-in that served the selection; "" for the local disk.
    std::wstring PluginName();
    // The account of that plug-in under which the files were picked.
    std::wstring Account();

  private:
    HostApi& host_;
    std::unique_ptr<FileDialog> dialog_;
};
