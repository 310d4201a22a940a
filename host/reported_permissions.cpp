#include "reported_permissions.h"

#include "engine/permissions.h"

namespace pdfhost {

std::uint32_t ReportedPermissions(std::uint32_t granted) {
    if ((granted & engine::permission::kModify) == 0)
        granted &= ~engine::permission::kAnnotate;
    return granted;
}

}  // namespace pdfhost
