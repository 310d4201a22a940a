#include "file_reader.h"

#include "engine/permissions.h"

namespace pdfhost {

int FileReader::Open(engine::Context& context, const std::string& path) {
    document_.reset();
    if (path.empty())
        return 1;
    try {
        document_.emplace(engine::Document::Open(context, path));
    } catch (const std::exception&) {
        return 1;
    }
    return 0;
}

int SecurityHandler::Check(std::uint32_t grantedPermissions) {
    return (grantedPermissions & engine::permission::kModify) != 0 ? 0 : 1;
}

}  // namespace pdfhost
