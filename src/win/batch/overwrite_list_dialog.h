// The files a batch would overwrite; it ends with OK when the user goes on with the batch.
#pragma once

#include <string>
#include <vector>

#include "win_dialog.h"

class OverwriteListDialog final : public WinDialog {
  public:
    explicit OverwriteListDialog(std::vector<std::wstring> files) : files_(std::move(files)) {}

  protected:
    DialogTemplate Layout() const override;
    void OnInit() override;

  private:
    std::vector<std::wstring> files_;
};
