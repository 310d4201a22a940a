#pragma once

#include <string>
#include <vector>

#include "engine/annotations.h"
#include "engine/document.h"

namespace pdfhost {

// The /NM texts of the annotations, in order (UTF-8; empty for one without a name).
std::vector<std::string> AnnotationNames(engine::Document& document,
                                         const std::vector<engine::AnnotationId>& ids);

}  // namespace pdfhost
