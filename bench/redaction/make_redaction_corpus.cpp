// Writes the benchmark corpus: make_redaction_corpus OUT.pdf [PAGES] [KIND]. KIND `text` (the
// default): 45 lines a page; every third line carries one of the sensitive terms, so a 200-page
// file holds 3,000 matches. `blank`: pages without text. `dense`: pages of 1,000 lines that each
// hold the word "ab" 100 times, 100,000 matches of one term a page.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "engine/context.h"
#include "engine/pdf_factory.h"
#include "redaction_corpus.h"

namespace {

constexpr int kLinesPerPage = 45;
constexpr const char* kFiller[] = {
    "quarterly review of the account records and the related correspondence",
    "the committee noted the figures and asked for a revised summary",
    "copies were filed with the archive department on the same day",
    "further questions should be addressed to the records office",
};

std::string LineText(int page, int line) {
    const std::string filler = kFiller[(page + line) % 4];
    if (line % 3 != 0)
        return filler;
    const auto& terms = bench::SensitiveTerms();
    const std::string& term =
        terms[static_cast<std::size_t>((page * kLinesPerPage + line) / 3) % terms.size()];
    return "Ref " + std::to_string(page * 100 + line) + ": " + term + " - " + filler.substr(0, 40);
}

constexpr int kDenseLines = 1000;
constexpr int kDenseWordsPerLine = 100;

pdfhost::engine::PageDescription TextPage(int page) {
    pdfhost::engine::PageDescription content;
    for (int line = 0; line < kLinesPerPage; ++line) {
        content.Add(pdfhost::engine::TextItem{48, 760 - 16.0f * static_cast<float>(line), 10,
                                              LineText(page, line)});
    }
    return content;
}

pdfhost::engine::PageDescription DensePage() {
    std::string words;
    for (int i = 0; i < kDenseWordsPerLine; ++i)
        words += i == 0 ? "ab" : " ab";
    pdfhost::engine::PageDescription content;
    for (int line = 0; line < kDenseLines; ++line) {
        content.Add(
            pdfhost::engine::TextItem{20, 780 - 0.75f * static_cast<float>(line), 0.7f, words});
    }
    return content;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: make_redaction_corpus OUT.pdf [PAGES] [text|blank|dense]\n");
        return 2;
    }
    const int pages = argc > 2 ? std::atoi(argv[2]) : 200;
    const std::string kind = argc > 3 ? argv[3] : "text";
    if (pages <= 0 || (kind != "text" && kind != "blank" && kind != "dense")) {
        std::fprintf(stderr,
                     "make_redaction_corpus: PAGES must be positive, KIND one of text, "
                     "blank, dense\n");
        return 2;
    }
    try {
        pdfhost::engine::Context context;
        pdfhost::engine::PdfDescription description;
        for (int page = 0; page < pages; ++page) {
            if (kind == "blank")
                description.pages.push_back(pdfhost::engine::PageDescription::Blank());
            else if (kind == "dense")
                description.pages.push_back(DensePage());
            else
                description.pages.push_back(TextPage(page));
        }
        pdfhost::engine::PdfFactory(context).Write(description, argv[1]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "make_redaction_corpus: %s\n", e.what());
        return 1;
    }
    return 0;
}
