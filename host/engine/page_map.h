#pragma once

#include <string_view>

#include "engine/mupdf_types.h"

namespace pdfhost::engine {

// MuPDF's map from page numbers to page objects for one document, and the page lookups that go
// through it. Without the map every lookup walks the page tree, so finding page 10,000 of a
// flat tree costs 10,000 steps; with it a lookup is one step. The page tree must not change
// while the map is loaded: the engine never adds, removes or moves pages of a document it
// opened, and the factory loads the map once its pages are in.
//
// Through the map, some MuPDF versions hand every lookup a new reference that its own callers
// (page loading among them) never drop. The map finds out on load whether lookups keep a
// reference, and LookUp and LoadPage leave the caller owning exactly one: what MuPDF keeps
// beyond that is dropped here. A page with links or actions is loaded without the map, since
// MuPDF looks up the pages those point to and nothing here could drop those references.
class PageMap {
  public:
    PageMap() = default;
    PageMap(PageMap&& other) noexcept;
    PageMap& operator=(PageMap&& other) noexcept;
    PageMap(const PageMap&) = delete;
    PageMap& operator=(const PageMap&) = delete;
    ~PageMap();

    // Loads MuPDF's map of `doc`, which must outlive the map or be passed to Drop first. A page
    // tree MuPDF cannot index leaves the map unloaded: lookups then walk the tree.
    void Load(fz_context* ctx, pdf_document* doc) noexcept;
    // Drops MuPDF's map; lookups walk the page tree again.
    void Drop() noexcept;
    bool Loaded() const { return doc_ != nullptr; }

    // The dictionary of page `page` of `doc` (a reference the caller owns). Throws
    // Error("<what>: <reason>") for a page MuPDF cannot find.
    ObjPtr LookUp(fz_context* ctx, pdf_document* doc, int page, std::string_view what) const;
    // Page `page` of `doc`, loaded. Throws Error("<what>: <reason>") when MuPDF cannot load it.
    PagePtr LoadPage(fz_context* ctx, pdf_document* doc, int page, std::string_view what) const;

  private:
    fz_context* ctx_ = nullptr;
    pdf_document* doc_ = nullptr;
    bool lookupsKeep_ = false;
};

}  // namespace pdfhost::engine
