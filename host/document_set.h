// The documents open in the host, in the order of their tabs, and which one is active. Numbers
// start at 1 and are never given twice in one run. Hidden documents have no tab: they are found by
// handle but neither counted nor activated.
#pragma once

#include <memory>
#include <vector>

#include "host_document.h"

namespace pdfhost {

class DocumentSet {
  public:
    HostDocument& Add(engine::Document document, DocumentKind kind);
    // Removes the document; when it was active no document is active afterwards.
    void Remove(const HostDocument& document);

    HostDocument* Find(HostDoc handle) const;
    HostDocument* FindByNumber(int number) const;
    HostDocument* FindByPdf(NdxDoc handle) const;
    // The document that holds the handed-out object, with the object; nulls when none does.
    std::pair<HostDocument*, pdf_obj*> FindObject(NdxObject handle) const;

    // Documents with a tab, in tab order.
    std::vector<HostDocument*> Tabs() const;
    // The tab that becomes active when `closing` goes: the next one, else the previous one.
    HostDocument* NeighbourTab(const HostDocument& closing) const;

    HostDocument* Active() const { return active_; }
    void SetActive(HostDocument* document) { active_ = document; }

    // Every document, hidden ones included.
    const std::vector<std::unique_ptr<HostDocument>>& All() const { return documents_; }
    void Clear();

  private:
    std::vector<std::unique_ptr<HostDocument>> documents_;
    HostDocument* active_ = nullptr;
    int nextNumber_ = 1;
};

}  // namespace pdfhost
