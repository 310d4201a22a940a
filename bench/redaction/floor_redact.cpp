// The floor of the redaction benchmark: the same job as the plug-in's — find every sensitive term,
// put a Redact annotation on each match, apply, save in full with garbage collection — as one plain
// loop over MuPDF's own API, with no bridge and no host.
// Usage: floor_redact IN.pdf OUT.pdf; prints the number of matches, and on standard error the
// seconds spent in each phase (find, annotate, apply, save), summed over the pages.
#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <chrono>
#include <cstdio>
#include <vector>

#include "redaction_corpus.h"

namespace {

constexpr int kMaxHits = 4096;

// Seconds spent in each phase of the job, summed over the pages.
struct PhaseTimes {
    double find = 0;
    double annotate = 0;
    double apply = 0;
    double save = 0;
};
PhaseTimes phases;

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

int RedactPage(fz_context* ctx, pdf_document* doc, int number) {
    volatile int matches = 0;
    pdf_page* page = pdf_load_page(ctx, doc, number);
    fz_stext_page* text = nullptr;
    fz_var(text);
    fz_try(ctx) {
        Clock::time_point mark = Clock::now();
        text = fz_new_stext_page_from_page(ctx, &page->super, nullptr);
        phases.find += SecondsSince(mark);
        std::vector<fz_quad> quads(kMaxHits);
        std::vector<int> marks(kMaxHits);
        for (const std::string& term : bench::SensitiveTerms()) {
            mark = Clock::now();
            const int count =
                fz_search_stext_page(ctx, text, term.c_str(), marks.data(), quads.data(), kMaxHits);
            phases.find += SecondsSince(mark);
            mark = Clock::now();
            for (int first = 0; first < count;) {
                int last = first + 1;
                while (last < count && marks[static_cast<std::size_t>(last)] == 0)
                    ++last;
                pdf_annot* annot = pdf_create_annot(ctx, page, PDF_ANNOT_REDACT);
                pdf_set_annot_quad_points(ctx, annot, last - first,
                                          &quads[static_cast<std::size_t>(first)]);
                pdf_drop_annot(ctx, annot);
                matches = matches + 1;
                first = last;
            }
            phases.annotate += SecondsSince(mark);
        }
        mark = Clock::now();
        pdf_redact_options options{};
        options.black_boxes = 1;
        options.image_method = PDF_REDACT_IMAGE_PIXELS;
        pdf_redact_page(ctx, doc, page, &options);
        phases.apply += SecondsSince(mark);
    }
    fz_always(ctx) {
        fz_drop_stext_page(ctx, text);
        fz_drop_page(ctx, &page->super);
    }
    fz_catch(ctx) {
        fz_rethrow(ctx);
    }
    return matches;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: floor_redact IN.pdf OUT.pdf\n");
        return 2;
    }
    fz_context* ctx = fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT);
    pdf_document* doc = nullptr;
    volatile int matches = 0;
    volatile int status = 0;
    fz_var(doc);
    fz_try(ctx) {
        fz_register_document_handlers(ctx);
        doc = pdf_open_document(ctx, argv[1]);
        const int pages = pdf_count_pages(ctx, doc);
        for (int number = 0; number < pages; ++number) {
            matches = matches + RedactPage(ctx, doc, number);
        }
        const Clock::time_point mark = Clock::now();
        pdf_write_options options = pdf_default_write_options;
        options.do_garbage = 1;
        pdf_save_document(ctx, doc, argv[2], &options);
        phases.save += SecondsSince(mark);
    }
    fz_always(ctx) {
        pdf_drop_document(ctx, doc);
    }
    fz_catch(ctx) {
        std::fprintf(stderr, "floor_redact: %s\n", fz_caught_message(ctx));
        status = 1;
    }
    fz_drop_context(ctx);
    if (status == 0) {
        std::fprintf(stderr, "phases: find %.3f annotate %.3f apply %.3f save %.3f\n", phases.find,
                     phases.annotate, phases.apply, phases.save);
        std::printf("%d\n", static_cast<int>(matches));
    }
    return status;
}
