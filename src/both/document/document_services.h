// What the document commands use of the plug-in, handed to them by the application
// once the host is bound.
#pragma once

#include <functional>
#include <memory>

#include "bridge/page_event_sink.h"
#include "document/document_access.h"
#include "document/temporary_save.h"
#include "host/host_api.h"

class BrevanConfig;
class PlatformServices;
class ProgressBarHost;

struct DocumentServices {
    HostApi& host;
    PlatformServices& platform;
    const DocumentAccess& documents;
    PageEventSink& page;
    // Null while the plug-in is not initialised.
    const std::unique_ptr<BrevanConfig>& config;
    const std::unique_ptr<ProgressBarHost>& progressBar;
    TemporarySave& temporarySave;
    // Shows or hides the task pane and remembers the choice.
    std::function<void(bool)> showTaskPane;
};
