#pragma once

#include <memory>
#include <vector>

#include "engine/mupdf_types.h"
#include "engine/redaction_areas.h"

namespace pdfhost::engine {

struct PathFilterState;

// A form XObject drawn by the content, and the matrix from its space to the areas' space.
struct PlacedForm {
    ObjPtr form;
    fz_matrix ctm;
};

// A content processor that passes every operator on to `next`, except the paths that meet an
// area: those are cut to what lies outside the areas (see Paint in the source), so that no
// coordinate of theirs remains inside one. Rectangles and straight segments are cut exactly;
// curves of a subpath that meets an area are cut as short straight segments; subpaths that
// meet no area pass as they were. A path painting wholly inside goes, as does an unpainted
// one (n) that meets an area. Coordinates are followed through q, Q and cm from `ctm` (the
// areas' space), so the filter must see the operators as they will be written. Forms drawn
// are noted with their placement (TakeForms), for CutPathsInForms.
class CoveredPathFilter {
  public:
    // Throws Error when MuPDF cannot allocate the processor.
    CoveredPathFilter(fz_context* ctx, pdf_processor* next, const RedactionAreas& areas,
                      fz_matrix ctm = fz_identity);
    ~CoveredPathFilter();
    CoveredPathFilter(const CoveredPathFilter&) = delete;
    CoveredPathFilter& operator=(const CoveredPathFilter&) = delete;

    // The processor to feed; it lives as long as this object.
    pdf_processor* Processor() const;
    // How many paths were removed, and how many cut.
    int Removed() const;
    int Cut() const;
    // The forms drawn so far, each where it was drawn.
    std::vector<PlacedForm> TakeForms();

  private:
    fz_context* ctx_;
    std::unique_ptr<PathFilterState> state_;
};

// Cuts the paths of `forms` (and of the forms they draw, to a depth) that meet the areas, in
// place, and redacts the tiling patterns of their resources (see RedactTilingPatterns): call it
// only on forms that belong to the content being redacted (the instances the redaction made).
// `depth` counts the forms and patterns entered before these. Throws Error.
void CutPathsInForms(fz_context* ctx, pdf_document* pdf, std::vector<PlacedForm> forms,
                     const RedactionAreas& areas, int depth = 0);

}  // namespace pdfhost::engine
