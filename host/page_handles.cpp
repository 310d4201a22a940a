#include "page_handles.h"

namespace pdfhost {

HostPageView PageHandles::ViewOf(HostDoc document, int index) {
    const auto key = std::make_pair(document, index);
    if (const auto it = viewIndex_.find(key); it != viewIndex_.end())
        return it->second;
    const NdxPage page = pages_.Emplace(PdfPageRecord{document, index, false, true, {}, {}});
    const HostPageView view = views_.Emplace(PageViewRecord{document, index, page});
    viewIndex_.emplace(key, view);
    return view;
}

bool PageHandles::LoadPage(NdxPage page, HostDoc document, int index) {
    PdfPageRecord* record = pages_.Find(page);
    if (record == nullptr || record->hostOwned)
        return false;
    DropObjectsOf(page);
    record->document = document;
    record->index = index;
    return true;
}

bool PageHandles::DestroyPage(NdxPage page) {
    const PdfPageRecord* record = pages_.Find(page);
    if (record == nullptr || record->hostOwned)
        return false;
    DropObjectsOf(page);
    return pages_.Erase(page);
}

void PageHandles::SetObjects(NdxPage page, std::vector<engine::PageObjectType> types) {
    PdfPageRecord* record = pages_.Find(page);
    if (record == nullptr)
        return;
    DropObjectsOf(page);
    record->types = std::move(types);
    record->parsed = true;
}

const std::vector<NdxPageObject>& PageHandles::ObjectsOf(NdxPage page) {
    static const std::vector<NdxPageObject> kNone;
    PdfPageRecord* record = pages_.Find(page);
    if (record == nullptr)
        return kNone;
    if (record->objects.size() != record->types.size()) {
        record->objects.reserve(record->types.size());
        for (const engine::PageObjectType type : record->types)
            record->objects.push_back(objects_.Emplace(PageObjectRecord{page, type}));
    }
    return record->objects;
}

void PageHandles::DropObjectsOf(NdxPage page) {
    PdfPageRecord* record = pages_.Find(page);
    if (record == nullptr)
        return;
    for (const NdxPageObject object : record->objects)
        objects_.Erase(object);
    record->objects.clear();
    record->types.clear();
    record->parsed = false;
}

void PageHandles::ForgetDocument(HostDoc document) {
    for (auto it = viewIndex_.begin(); it != viewIndex_.end();) {
        if (it->first.first != document) {
            ++it;
            continue;
        }
        if (const PageViewRecord* view = views_.Find(it->second)) {
            DropObjectsOf(view->page);
            pages_.Erase(view->page);
        }
        views_.Erase(it->second);
        it = viewIndex_.erase(it);
    }
    pages_.ForEach([&](PdfPageRecord& page) {
        if (page.document == document)
            page.document = nullptr;
    });
}

}  // namespace pdfhost
