// BatchSessionHost: the application's side of the batch session: the host, the platform's batch
// dialogs, the configuration's choice to keep the page visible, and the batch's document slot.
#pragma once

#include <memory>

#include "batch/batch_session_context.h"

class BrevanConfig;
class PlatformServices;
struct PageDialogServices;

// What the batch session's host uses of the plug-in.
struct BatchSessionServices {
    HostApi& host;
    PlatformServices& platform;
    // What the batch's page dialog is made with.
    const PageDialogServices& pageDialogs;
    // Null while the plug-in is not initialised.
    const std::unique_ptr<BrevanConfig>& config;
    // The application's batch mode, and its batch document, current while in a batch.
    bool& batchMode;
    HostDoc& batchDocument;
};

class BatchSessionHost final : public BatchSessionContext, public BatchDialogs {
  public:
    explicit BatchSessionHost(const BatchSessionServices& services) : services_(services) {}

    HostApi& Host() override { return services_.host; }
    BatchDialogs& Dialogs() override { return *this; }
    bool ShowsPageWhileRunning() const override;
    void SetBatchMode(bool inBatch) override { services_.batchMode = inBatch; }
    HostDoc BatchDocument() const override { return services_.batchDocument; }
    void SetBatchDocument(HostDoc doc) override { services_.batchDocument = doc; }

    std::optional<BatchChoice> ChooseBatchFiles(HostWindow parent) override;
    std::unique_ptr<BatchPageDialog> MakeBatchPageDialog(HostWindow parent) override;
    int ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) override;

  private:
    BatchSessionServices services_;
};
