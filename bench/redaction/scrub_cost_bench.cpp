// What removing hidden copies of redacted text adds to a redaction: the same job as the
// benchmark's (find every term, a Redact annotation on each match, apply, save in full) in
// pdfhost's engine, with the time of each phase, and the share that the two scrubbing phases
// (collecting the removed texts, scrubbing the document) and the full rewrite (against an
// incremental save of the same changes) add to the rest.
// Usage: scrub_cost_bench IN.pdf OUT.pdf [runs]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include "engine/annotations.h"
#include "engine/context.h"
#include "engine/document.h"
#include "engine/hidden_text_scrubber.h"
#include "engine/mupdf_call.h"
#include "engine/redaction.h"
#include "engine/redaction_text.h"
#include "engine/text_finder.h"
#include "engine/text_page.h"
#include "engine/text_replacer.h"
#include "redaction_corpus.h"

namespace {

using namespace pdfhost::engine;
using Clock = std::chrono::steady_clock;

struct Phases {
    double search = 0;   // text, search, annotations
    double collect = 0;  // the texts under the boxes and the searched terms (scrubbing)
    double apply = 0;
    double scrub = 0;        // (scrubbing)
    double save = 0;         // full rewrite, unused objects dropped
    double incremental = 0;  // the same changes appended to a copy of the input
};

double Since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

PdfValue RedactDict(const std::vector<Rect>& bands) {
    PdfValue dict = PdfValue::Dictionary();
    dict.Set("Subtype", PdfValue::Name("Redact"));
    Rect all = bands.front();
    PdfValue quads = PdfValue::Array();
    for (const Rect& r : bands) {
        all = Rect{std::min(all.left, r.left), std::min(all.bottom, r.bottom),
                   std::max(all.right, r.right), std::max(all.top, r.top)};
        for (const float v : {r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top})
            quads.Push(PdfValue::Real(v));
    }
    PdfValue rect = PdfValue::Array();
    for (const float v : {all.left, all.bottom, all.right, all.top})
        rect.Push(PdfValue::Real(v));
    dict.Set("Rect", rect);
    dict.Set("QuadPoints", quads);
    return dict;
}

Phases RunOnce(Context& context, const std::string& in, const std::string& out) {
    Phases phases;
    Document document = Document::Open(context, in);
    Annotations annotations(document);

    auto start = Clock::now();
    std::vector<std::shared_ptr<const PageText>> texts;
    std::vector<AnnotationId> targets;
    std::vector<std::vector<std::u32string>> termsOnPage;
    for (int page = 0; page < document.PageCount(); ++page) {
        texts.push_back(std::make_shared<const PageText>(PageText::OfPage(document, page)));
        termsOnPage.emplace_back();
        for (const std::string& term : bench::SensitiveTerms()) {
            const std::u32string needle = DecodeUtf8(term);
            const auto pattern = TextPattern::Compile(needle, FindOptions{});
            for (const TextMatch& match : pattern->FindAll(*texts.back())) {
                const MatchPlacement placement = PlacementOf(*texts.back(), match);
                targets.push_back(annotations.Create(page, RedactDict(placement.bands), 0, -1));
                termsOnPage.back().push_back(needle);
            }
        }
    }
    phases.search = Since(start);

    start = Clock::now();
    std::vector<std::u32string> removed;
    for (const AnnotationId& target : targets) {
        for (std::u32string& text : TextsUnder(*texts[static_cast<std::size_t>(target.page)],
                                               AreasOfRedaction(document, target.object)))
            removed.push_back(std::move(text));
    }
    for (const auto& terms : termsOnPage)
        removed.insert(removed.end(), terms.begin(), terms.end());
    phases.collect = Since(start);

    start = Clock::now();
    Redactor(document).Apply(targets, RedactionOptions{});
    phases.apply = Since(start);

    start = Clock::now();
    HiddenTextScrubber(document, removed).Run();
    phases.scrub = Since(start);

    const std::string appended = out + ".incremental.pdf";
    std::filesystem::copy_file(in, appended, std::filesystem::copy_options::overwrite_existing);
    start = Clock::now();
    CallMupdf(document.fz(), "cannot save incrementally", [&] {
        pdf_write_options options = pdf_default_write_options;
        options.do_incremental = 1;
        pdf_save_document(document.fz(), document.pdf(), appended.c_str(), &options);
    });
    phases.incremental = Since(start);
    std::filesystem::remove(appended);

    start = Clock::now();
    document.SaveFull(out);
    phases.save = Since(start);
    return phases;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: scrub_cost_bench IN.pdf OUT.pdf [runs]\n");
        return 2;
    }
    const int runs = argc > 3 ? std::max(1, std::atoi(argv[3])) : 3;
    Context context;
    Phases best{1e9, 1e9, 1e9, 1e9, 1e9, 1e9};
    for (int run = 0; run < runs; ++run) {
        const Phases p = RunOnce(context, argv[1], argv[2]);
        best = Phases{std::min(best.search, p.search), std::min(best.collect, p.collect),
                      std::min(best.apply, p.apply),   std::min(best.scrub, p.scrub),
                      std::min(best.save, p.save),     std::min(best.incremental, p.incremental)};
    }
    const double rest = best.search + best.apply + best.incremental;
    const double scrubbing = best.collect + best.scrub + (best.save - best.incremental);
    std::printf("search+annotate %.3f s  apply %.3f s  incremental save %.3f s\n", best.search,
                best.apply, best.incremental);
    std::printf("collect removed texts %.3f s  scrub %.3f s  full rewrite %.3f s\n", best.collect,
                best.scrub, best.save);
    std::printf("scrubbing and the full rewrite add %.1f%% to the rest (target at most 20%%)\n",
                100.0 * scrubbing / rest);
    return 0;
}
