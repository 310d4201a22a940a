#include "document/upload_file_dialog.h"

#include "host/host_string.h"

CUploadFileDialog::CUploadFileDialog(HostApi& host, PlatformServices& platform,
                                     const FileDialogSettings& settings)
    : host_(host), dialog_(platform.MakeFileDialog(settings)) {
    host_.HostFileDialogAttach(dialog_->Handle(), 1);
}

std::wstring CUploadFileDialog::PluginName() {
    HostWide name(host_);
    host_.HostFileDialogGetPlugin(dialog_->Handle(), name);
    return name.Text();
}

std::wstring CUploadFileDialog::Account() {
    HostWide account(host_);
    host_.HostFileDialogGetAccount(dialog_->Handle(), account);
    return account.Text();
}
