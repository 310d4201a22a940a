// The output options dialog: where a batch saves its results and how it names them, over the
// portable rules of the options. It takes the record at creation and gives the written-back
// record when it ends with OK.
#pragma once

#include "batch/output_options.h"
#include "win_dialog.h"

class HostApi;

class OutputOptionDialog final : public WinDialog {
  public:
    OutputOptionDialog(HostApi& host, const OutputOptions& options);

    const OutputOptions& Record() const { return record_; }
    OutputOptionControls Controls() const;

  protected:
    DialogTemplate Layout() const override;
    void OnInit() override;
    bool OnCommand(int id, int code) override;

  private:
    void UpdateStates() const;
    void DropRefusedCharacters(int edit) const;
    void ChooseFolder() const;
    void OnOverwriteClicked() const;
    void Accept();

    HostApi& host_;
    OutputOptions record_;
};
