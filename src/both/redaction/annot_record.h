// AnnotRecord: an annotation this system made from a stored match. `annot` is the editor's
// annotation, or during a batch run (no view) the PDF annotation; null once it is gone.
#pragma once

#include <string>

#include "host/host_abi.h"

struct AnnotRecord {
    std::wstring uniqueIDName;  // the annotation's /NM, as the page chose it
    HostAnnot annot = nullptr;
};
