// BatchSessionHost: the application's side of the batch session: the host, the platform's batch
// dialogs, the configuration's choice to keep the page visible, and the batch's document slot.
#pragma once

#include "batch/batch_session_context.h"

class Brevan;

class BatchSessionHost final : public BatchSessionContext, public BatchDialogs {
  public:
    explicit BatchSessionHost(Brevan& app) : app_(app) {}

    HostApi& Host() override;
    BatchDialogs& Dialogs() override { return *this; }
    bool ShowsPageWhileRunning() const override;
    void SetBatchMode(bool inBatch) override;
    HostDoc BatchDocument() const override;
    void SetBatchDocument(HostDoc doc) override;

    std::optional<BatchChoice> ChooseBatchFiles(HostWindow parent) override;
    std::unique_ptr<BatchPageDialog> MakeBatchPageDialog(HostWindow parent) override;
    int ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) override;

  private:
    Brevan& app_;
};
