#include "batch_session_host.h"

#include "app/brevan.h"
#include "config/brevan_config.h"

HostApi& BatchSessionHost::Host() {
    return app_.host();
}

bool BatchSessionHost::ShowsPageWhileRunning() const {
    return app_.config && app_.config->batchDlgShow;
}

void BatchSessionHost::SetBatchMode(bool inBatch) {
    app_.batchMode = inBatch;
}

HostDoc BatchSessionHost::BatchDocument() const {
    return app_.batchDocument;
}

void BatchSessionHost::SetBatchDocument(HostDoc doc) {
    app_.batchDocument = doc;
}

std::optional<BatchChoice> BatchSessionHost::ChooseBatchFiles(HostWindow parent) {
    return app_.platform().ChooseBatchFiles(app_.host(), parent);
}

std::unique_ptr<BatchPageDialog> BatchSessionHost::MakeBatchPageDialog(HostWindow parent) {
    return app_.platform().MakeBatchDialog(app_, parent);
}

int BatchSessionHost::ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) {
    return app_.platform().ShowBatchResult(parent, outcome);
}
