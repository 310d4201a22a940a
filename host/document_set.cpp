#include "document_set.h"

#include <algorithm>

namespace pdfhost {

HostDocument& DocumentSet::Add(engine::Document document, DocumentKind kind) {
    documents_.push_back(std::make_unique<HostDocument>(nextNumber_++, std::move(document), kind));
    return *documents_.back();
}

void DocumentSet::Remove(const HostDocument& document) {
    if (active_ == &document)
        active_ = nullptr;
    std::erase_if(documents_, [&](const auto& entry) { return entry.get() == &document; });
}

HostDocument* DocumentSet::Find(HostDoc handle) const {
    if (handle == nullptr)
        return nullptr;
    for (const auto& document : documents_) {
        if (document->Handle() == handle)
            return document.get();
    }
    return nullptr;
}

HostDocument* DocumentSet::FindByNumber(int number) const {
    for (const auto& document : documents_) {
        if (document->Number() == number)
            return document.get();
    }
    return nullptr;
}

HostDocument* DocumentSet::FindByPdf(NdxDoc handle) const {
    if (handle == nullptr)
        return nullptr;
    for (const auto& document : documents_) {
        if (document->PdfHandle() == handle)
            return document.get();
    }
    return nullptr;
}

std::pair<HostDocument*, pdf_obj*> DocumentSet::FindObject(NdxObject handle) const {
    if (handle == nullptr)
        return {nullptr, nullptr};
    for (const auto& document : documents_) {
        if (pdf_obj* object = document->Objects().Find(handle))
            return {document.get(), object};
    }
    return {nullptr, nullptr};
}

std::vector<HostDocument*> DocumentSet::Tabs() const {
    std::vector<HostDocument*> tabs;
    for (const auto& document : documents_) {
        if (!document->IsHidden())
            tabs.push_back(document.get());
    }
    return tabs;
}

HostDocument* DocumentSet::NeighbourTab(const HostDocument& closing) const {
    const std::vector<HostDocument*> tabs = Tabs();
    const auto it = std::find(tabs.begin(), tabs.end(), &closing);
    if (it == tabs.end())
        return nullptr;
    if (it + 1 != tabs.end())
        return *(it + 1);
    return it == tabs.begin() ? nullptr : *(it - 1);
}

void DocumentSet::Clear() {
    active_ = nullptr;
    documents_.clear();
}

}  // namespace pdfhost
