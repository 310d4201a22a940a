// The platform's dialogs of a batch run.
#pragma once

#include <memory>
#include <optional>

#include "batch/batch_choice.h"
#include "bridge/page_dialog.h"
#include "host/host_abi.h"

class BatchDialogs {
  public:
    virtual ~BatchDialogs() = default;
    // The file list with its output options, modal over `parent`; the choice when the user ends
    // it with OK.
    virtual std::optional<BatchChoice> ChooseBatchFiles(HostWindow parent) = 0;
    // The page dialog that drives the run, over `parent`.
    virtual std::unique_ptr<BatchPageDialog> MakeBatchPageDialog(HostWindow parent) = 0;
    // The result of the run, modal over `parent`; 1 when the user ends it with OK.
    virtual int ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) = 0;
};
