#include "batch_session_host.h"

#include "app/platform_services.h"
#include "config/brevan_config.h"

bool BatchSessionHost::ShowsPageWhileRunning() const {
    return services_.config && services_.config->batchDlgShow;
}

std::optional<BatchChoice> BatchSessionHost::ChooseBatchFiles(HostWindow parent) {
    return services_.platform.ChooseBatchFiles(services_.host, parent);
}

std::unique_ptr<BatchPageDialog> BatchSessionHost::MakeBatchPageDialog(HostWindow parent) {
    return services_.platform.MakeBatchDialog(services_.pageDialogs, parent);
}

int BatchSessionHost::ShowBatchResult(HostWindow parent, const BatchOutcome& outcome) {
    return services_.platform.ShowBatchResult(parent, outcome);
}
