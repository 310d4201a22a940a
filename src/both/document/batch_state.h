// What a command consults of a batch run: whether one is running, the batch's document (the
// current one during the run, which the close command lets go of) and the session that takes the
// save and close commands. The references follow the application's own fields, so the answers
// are always the present ones.
#pragma once

#include "host/host_abi.h"

class BatchDocumentSession;

struct BatchState {
    const bool& running;
    HostDoc& document;
    // Null unless a session exists.
    BatchDocumentSession* const& session;
};
