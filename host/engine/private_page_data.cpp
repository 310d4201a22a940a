#include "engine/private_page_data.h"

#include <unordered_set>

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {
namespace {

constexpr int kMaxDepth = 32;

class PrivateDataDrop {
  public:
    explicit PrivateDataDrop(fz_context* ctx) : ctx_(ctx) {}

    // Drops /PieceInfo of every form XObject reachable from `resources`.
    void Forms(pdf_obj* resources, int depth) {
        if (depth > kMaxDepth || !pdf_is_dict(ctx_, resources))
            return;
        pdf_obj* xobjects = pdf_dict_get(ctx_, resources, PDF_NAME(XObject));
        const int n = pdf_dict_len(ctx_, xobjects);
        for (int i = 0; i < n; ++i) {
            pdf_obj* xobject = pdf_dict_get_val(ctx_, xobjects, i);
            if (!pdf_is_dict(ctx_, xobject) ||
                !pdf_name_eq(ctx_, pdf_dict_get(ctx_, xobject, PDF_NAME(Subtype)), PDF_NAME(Form)))
                continue;
            if (pdf_is_indirect(ctx_, xobject) &&
                !visited_.insert(pdf_to_num(ctx_, xobject)).second)
                continue;
            pdf_dict_dels(ctx_, xobject, "PieceInfo");
            Forms(pdf_dict_get(ctx_, xobject, PDF_NAME(Resources)), depth + 1);
        }
    }

  private:
    fz_context* ctx_;
    std::unordered_set<int> visited_;
};

}  // namespace

void DropPrivatePageData(fz_context* ctx, pdf_obj* page_obj) {
    CallMupdf(ctx, "cannot drop the page's private data", [&] {
        pdf_dict_dels(ctx, page_obj, "Thumb");
        pdf_dict_dels(ctx, page_obj, "PieceInfo");
        PrivateDataDrop(ctx).Forms(pdf_dict_get_inheritable(ctx, page_obj, PDF_NAME(Resources)), 0);
    });
}

void DropPrivateDocumentData(fz_context* ctx, pdf_document* pdf) {
    CallMupdf(ctx, "cannot drop the document's private data", [&] {
        pdf_dict_dels(ctx, pdf_dict_get(ctx, pdf_trailer(ctx, pdf), PDF_NAME(Root)), "PieceInfo");
    });
}

}  // namespace pdfhost::engine
