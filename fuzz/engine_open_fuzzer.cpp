// Arbitrary bytes opened as a PDF by pdfhost's engine, then the read-only work a page asks for:
// page count, page text, page objects, form fields and their values, a search, the Info
// strings. The engine reports what it cannot do as an Error; anything else is a finding.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

#include "engine/context.h"
#include "engine/document.h"
#include "engine/error.h"
#include "engine/field_text_finder.h"
#include "engine/form_fields.h"
#include "engine/text_finder.h"
#include "engine/text_page.h"

namespace {

using namespace pdfhost::engine;

constexpr int kMaxPages = 4;

void ReadEverything(Document& document) {
    const int pages = std::min(document.PageCount(), kMaxPages);
    const auto pattern = TextPattern::Compile(U"the", FindOptions{});
    for (int page = 0; page < pages; ++page) {
        try {
            const PageText text = PageText::OfPage(document, page);
            text.Slice(0, text.CharCount());
            if (pattern)
                pattern->FindAll(text);
            document.PageObjects(page);
            InteractiveForm form(document);
            for (const ObjPtr& control : form.PageControls(page)) {
                pdf_obj* field = form.FieldOf(control.get());
                form.FullName(field);
                form.Value(field);
                form.TypeOf(control.get());
            }
            if (pattern)
                FindInFieldValues(document, page, *pattern);
        } catch (const Error&) {
        }
    }
    document.InfoString("Title");
    document.InfoString("Author");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Context* context = new Context();
    static const std::string path =
        "/tmp/engine_open_fuzzer." + std::to_string(::getpid()) + ".pdf";
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    try {
        Document document = Document::Open(*context, path);
        ReadEverything(document);
    } catch (const Error&) {
    }
    context->TakeWarnings();
    return 0;
}
