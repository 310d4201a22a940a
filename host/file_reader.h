// The reader a plug-in uses to learn whether a file can be taken before it opens it as a
// document: it opens the file with the engine and keeps it open until it is detached.
#pragma once

#include <optional>
#include <string>

#include "engine/document.h"

namespace pdfhost {

class FileReader {
  public:
    // Opens `path`; 0 when the engine took it, 1 when it cannot (missing, not a PDF, damaged
    // beyond repair, or locked by a password). A file opened before is let go first.
    int Open(engine::Context& context, const std::string& path);
    // Lets the opened file go.
    void Detach() { document_.reset(); }
    bool IsOpen() const { return document_.has_value(); }

  private:
    std::optional<engine::Document> document_;
};

// The security handler of a document check: it answers whether the document's encryption
// refuses changes to its content.
struct SecurityHandler {
    // 0 when changes are allowed, 1 when the encryption refuses them.
    static int Check(std::uint32_t grantedPermissions);
};

}  // namespace pdfhost
