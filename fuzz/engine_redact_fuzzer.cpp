// Arbitrary bytes opened as a PDF by pdfhost's engine, then the work of an apply: a Redact
// annotation over the upper left quarter of each of the first pages, the apply, the removal of
// hidden copies of what went (the texts under the boxes and a searched term), the full save and
// a second opening of the saved copy. The engine reports what it cannot do as an Error;
// anything else is a finding.
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "engine/annotations.h"
#include "engine/context.h"
#include "engine/document.h"
#include "engine/error.h"
#include "engine/hidden_text_scrubber.h"
#include "engine/mupdf_call.h"
#include "engine/page_object_number.h"
#include "engine/pdf_value.h"
#include "engine/redaction.h"
#include "engine/redaction_text.h"
#include "engine/text_page.h"

namespace {

using namespace pdfhost::engine;

constexpr int kMaxPages = 3;
constexpr std::uintptr_t kTag = 1;

PdfValue Numbers(std::initializer_list<float> values) {
    PdfValue array = PdfValue::Array();
    for (const float value : values)
        array.Push(PdfValue::Real(value));
    return array;
}

// A Redact annotation as the plug-in writes one, over the upper left quarter of the page.
AnnotationId MarkQuarter(Document& document, int page) {
    const Rect box = document.PageBox(page);
    const float midX = (box.left + box.right) / 2;
    const float midY = (box.bottom + box.top) / 2;
    PdfValue dict = PdfValue::Dictionary();
    dict.Set("Type", PdfValue::Name("Annot"));
    dict.Set("Subtype", PdfValue::Name("Redact"));
    dict.Set("Rect", Numbers({box.left, midY, midX, box.top}));
    dict.Set("QuadPoints", Numbers({box.left, midY, midX, midY, box.left, box.top, midX, box.top}));
    dict.Set("IC", Numbers({0, 0, 0}));
    dict.Set("NM", PdfValue::String("ai_plugin_fuzz"));
    dict.Set("P", PdfValue::Reference(PageObjectNumber(document, page), kTag));
    return Annotations(document).Create(page, dict, kTag, -1);
}

void Redact(Document& document, const std::string& copy) {
    std::vector<AnnotationId> targets;
    std::vector<std::u32string> removed = {U"the"};
    const int pages = std::min(document.PageCount(), kMaxPages);
    for (int page = 0; page < pages; ++page) {
        try {
            const AnnotationId id = MarkQuarter(document, page);
            const PageText text = PageText::OfPage(document, page);
            for (std::u32string& under : TextsUnder(text, AreasOfRedaction(document, id.object)))
                removed.push_back(std::move(under));
            targets.push_back(id);
        } catch (const Error&) {
        }
    }
    if (targets.empty())
        return;
    if (Redactor(document).Apply(targets, RedactionOptions{}).applied > 0)
        HiddenTextScrubber(document, removed).Run();
    document.WriteCopy(copy);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Context* context = new Context();
    static const std::string stem = "/tmp/engine_redact_fuzzer." + std::to_string(::getpid());
    const std::string path = stem + ".pdf";
    const std::string copy = stem + ".copy.pdf";
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    try {
        Document document = Document::Open(*context, path);
        Redact(document, copy);
        Document again = Document::Open(*context, copy);
        again.PageCount();
    } catch (const Error&) {
    }
    context->TakeWarnings();
    return 0;
}
