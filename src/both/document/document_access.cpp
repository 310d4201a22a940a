#include "document_access.h"

#include "document/document_registry.h"

HostDoc DocumentAccess::CurrentDoc() const {
    return batch_.running ? batch_.document : host_.HostAppGetActiveDoc();
}

bool DocumentAccess::FileIdOf(HostDoc doc, std::wstring& id) const {
    return registry_ && registry_->findIdByDoc(doc, id);
}

bool DocumentAccess::DocOf(const std::wstring& id, HostDoc& doc) const {
    return registry_ && registry_->findDocById(id, doc);
}
