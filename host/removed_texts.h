#pragma once

#include <string>
#include <vector>

#include "engine/annotations.h"
#include "host_document.h"

namespace pdfhost {

// The texts that applying the Redact annotations `targets` removes from `document`: the
// characters under each one, and each term searched on its page with a match under it.
// Throws engine::Error when a page or an annotation cannot be read.
std::vector<std::u32string> RemovedTextsOf(HostDocument& document,
                                           const std::vector<engine::AnnotationId>& targets);

}  // namespace pdfhost
