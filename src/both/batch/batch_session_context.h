// What a batch session takes from the application around it.
#pragma once

#include "batch/batch_dialogs.h"
#include "host/host_api.h"

class BatchSessionContext {
  public:
    virtual ~BatchSessionContext() = default;
    virtual HostApi& Host() = 0;
    virtual BatchDialogs& Dialogs() = 0;
    // Whether the page dialog stays visible once the page starts the run.
    virtual bool ShowsPageWhileRunning() const = 0;
    // Marks the application as being in a batch, in which the batch's document is current.
    virtual void SetBatchMode(bool inBatch) = 0;
    // The slot of the batch's current document.
    virtual HostDoc BatchDocument() const = 0;
    virtual void SetBatchDocument(HostDoc doc) = 0;
};
