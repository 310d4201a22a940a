// What the redaction commands use of the plug-in, handed to them by the application
// once the host is bound.
#pragma once

#include "document/document_access.h"
#include "host/host_api.h"

class AsyncLogger;

struct RedactionServices {
    HostApi& host;
    const DocumentAccess& documents;
    AsyncLogger& logger;
};
