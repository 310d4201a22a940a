#include "annotation_handles.h"

namespace pdfhost {

HostAnnot AnnotationHandles::HandleOf(HostDoc document, const engine::AnnotationId& id) {
    const auto key = std::make_pair(document, id.object);
    if (const auto it = byObject_.find(key); it != byObject_.end())
        return it->second;
    const HostAnnot handle = records_.Emplace(AnnotationRecord{document, id, {}, {}});
    byObject_.emplace(key, handle);
    return handle;
}

HostAnnot AnnotationHandles::NewPending(HostDoc document, engine::PdfValue entries) {
    return records_.Emplace(AnnotationRecord{document, {}, std::move(entries), {}});
}

void AnnotationHandles::Place(HostAnnot handle, HostDoc document, const engine::AnnotationId& id) {
    AnnotationRecord* record = records_.Find(handle);
    if (record == nullptr)
        return;
    record->document = document;
    record->id = id;
    record->pending.reset();
    byObject_[std::make_pair(document, id.object)] = handle;
}

NdxAnnotList AnnotationHandles::ListOf(HostDoc document, int page) {
    const auto key = std::make_pair(document, page);
    if (const auto it = listIndex_.find(key); it != listIndex_.end())
        return it->second;
    const NdxAnnotList list = lists_.Emplace(AnnotationListRecord{document, page});
    listIndex_.emplace(key, list);
    return list;
}

void AnnotationHandles::Forget(HostAnnot handle) {
    const AnnotationRecord* record = records_.Find(handle);
    if (record == nullptr)
        return;
    const auto key = std::make_pair(record->document, record->id.object);
    if (const auto it = byObject_.find(key); it != byObject_.end() && it->second == handle)
        byObject_.erase(it);
    records_.Erase(handle);
}

void AnnotationHandles::ForgetDocument(HostDoc document) {
    records_.EraseIf([&](const AnnotationRecord& record) { return record.document == document; });
    std::erase_if(byObject_, [&](const auto& entry) { return entry.first.first == document; });
    lists_.EraseIf([&](const AnnotationListRecord& list) { return list.document == document; });
    std::erase_if(listIndex_, [&](const auto& entry) { return entry.first.first == document; });
}

}  // namespace pdfhost
