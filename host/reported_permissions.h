#pragma once

#include <cstdint>

namespace pdfhost {

// The permission word the editor reports for a document whose engine grants `granted` (see
// engine/permissions.h). Changing annotations counts as granted only when the content may be
// changed as well: applying Redact annotations changes the content, and a caller that checks
// the annotation bit before an apply must learn then, not after, that the apply will fail.
std::uint32_t ReportedPermissions(std::uint32_t granted);

}  // namespace pdfhost
