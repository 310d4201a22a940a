#include "pdf_object_handles.h"

#include "handle_pool.h"

namespace pdfhost {

NdxObject PdfObjectHandles::HandleOf(pdf_obj* object) {
    if (object == nullptr)
        return nullptr;
    if (const auto it = byObject_.find(object); it != byObject_.end()) {
        return reinterpret_cast<NdxObject>(it->second);
    }
    const uintptr_t value = NextHandleValue();
    byHandle_.emplace(value, engine::ObjPtr(ctx_, pdf_keep_obj(ctx_, object)));
    byObject_.emplace(object, value);
    return reinterpret_cast<NdxObject>(value);
}

pdf_obj* PdfObjectHandles::Find(NdxObject handle) const {
    const auto it = byHandle_.find(reinterpret_cast<uintptr_t>(handle));
    return it == byHandle_.end() ? nullptr : it->second.get();
}

}  // namespace pdfhost
