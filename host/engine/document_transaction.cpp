#include "engine/document_transaction.h"

#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

DocumentTransaction::DocumentTransaction(Document& document, const char* name)
    : document_(document) {
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    ownsJournal_ = pdf->journal == nullptr;
    int steps = 0;
    stepsBefore_ = CallMupdf(ctx, "cannot start a change", [&] {
        pdf_enable_journal(ctx, pdf);
        const int position = pdf_undoredo_state(ctx, pdf, &steps);
        pdf_begin_operation(ctx, pdf, name);
        return position;
    });
    open_ = true;
}

void DocumentTransaction::Commit() {
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    CallMupdf(ctx, "cannot finish a change", [&] { pdf_end_operation(ctx, pdf); });
    open_ = false;
    committed_ = true;
}

DocumentTransaction::~DocumentTransaction() {
    fz_context* ctx = document_.fz();
    pdf_document* pdf = document_.pdf();
    try {
        CallMupdf(ctx, "cannot undo a change", [&] {
            if (open_)
                pdf_end_operation(ctx, pdf);
            int steps = 0;
            if (!committed_ && pdf_undoredo_state(ctx, pdf, &steps) > stepsBefore_)
                pdf_undo(ctx, pdf);
        });
    } catch (const Error&) {
        // The document keeps whatever MuPDF could not undo; nothing more can be done here.
    }
    if (ownsJournal_ && pdf->journal != nullptr) {
        pdf_drop_journal(ctx, pdf->journal);
        pdf->journal = nullptr;
    }
    if (!committed_)
        document_.MarkChanged();
}

}  // namespace pdfhost::engine
