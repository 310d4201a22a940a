// The host's open documents to choose from for a batch, all chosen at first. A document without a
// saved file of its own, or with unsaved changes, is announced once and saved by the host before
// it is added, since the batch works on files; one whose save fails or is cancelled is left out.
#pragma once

#include <string>
#include <vector>

#include "batch/open_documents.h"
#include "host/host_api.h"
#include "win_dialog.h"

class OpenDocumentsDialog final : public WinDialog {
  public:
    explicit OpenDocumentsDialog(HostApi& host) : host_(host) {}

    // The files of the chosen documents, in list order, as read at OK.
    const std::vector<std::wstring>& ChosenPaths() const { return chosen_; }

  protected:
    DialogTemplate Layout() const override;
    void OnInit() override;
    bool OnCommand(int id, int code) override;

  private:
    void Accept();

    HostApi& host_;
    std::vector<OpenDocument> docs_;  // by row
    std::vector<std::wstring> chosen_;
};
