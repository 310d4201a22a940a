#include "host_document.h"

#include <filesystem>

#include "handle_pool.h"

namespace pdfhost {

HostDocument::HostDocument(int number, engine::Document document, DocumentKind kind)
    : number_(number),
      handle_(reinterpret_cast<HostDoc>(NextHandleValue())),
      pdfHandle_(reinterpret_cast<NdxDoc>(NextHandleValue())),
      kind_(kind),
      document_(std::move(document)),
      objects_(document_.fz()),
      view_(kind == DocumentKind::kHidden ? nullptr : std::make_unique<DocView>(document_)) {}

std::string HostDocument::FileName() const {
    if (Path().empty())
        return "Untitled-" + std::to_string(number_) + ".pdf";
    return std::filesystem::path(Path()).filename().string();
}

void HostDocument::SavedToFile() {
    if (kind_ == DocumentKind::kTemporary)
        kind_ = DocumentKind::kFile;
}

bool HostDocument::SetModified(bool modified) {
    if (modified_ == modified)
        return false;
    modified_ = modified;
    return true;
}

}  // namespace pdfhost
