// The platform file dialog of the plug-in, a QFileDialog set up from the dialog settings the
// portable code uses (filter pairs "Label|pattern||", multi-select and must-exist flags).
#pragma once

#include <QFileDialog>
#include <memory>

#include "app/platform_services.h"

class QtFileDialog final : public FileDialog {
  public:
    explicit QtFileDialog(const FileDialogSettings& settings);

    HostFileDialog Handle() override;
    bool Run() override;
    std::vector<std::wstring> Paths() override;

  private:
    std::unique_ptr<QFileDialog> dialog_;
};

// "PDF Files (*.pdf)|*.PDF||" as Qt name filters: {"PDF Files (*.pdf)"}.
QStringList NameFiltersOf(const std::wstring& filter);
