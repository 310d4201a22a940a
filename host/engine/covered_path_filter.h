#pragma once

#include <memory>

#include "engine/redaction_areas.h"

struct fz_context;
struct pdf_processor;

namespace pdfhost::engine {

struct PathFilterState;

// A content processor that passes every operator on to `next`, except the paths that paint
// wholly inside one of the areas: those go, construction and painting operator together.
// Clipping paths always pass, as do paths that only cross an area (the fill drawn over the
// area hides their part in it). Coordinates are followed through q, Q and cm from the page's
// user space, so the filter must see the page's top-level operators as they will be written.
class CoveredPathFilter {
  public:
    // Throws Error when MuPDF cannot allocate the processor.
    CoveredPathFilter(fz_context* ctx, pdf_processor* next, const RedactionAreas& areas);
    ~CoveredPathFilter();
    CoveredPathFilter(const CoveredPathFilter&) = delete;
    CoveredPathFilter& operator=(const CoveredPathFilter&) = delete;

    // The processor to feed; it lives as long as this object.
    pdf_processor* Processor() const;
    // How many painted paths were removed.
    int Removed() const;

  private:
    fz_context* ctx_;
    std::unique_ptr<PathFilterState> state_;
};

}  // namespace pdfhost::engine
