// Helpers of the engine's tests: a fresh folder per test with a context and a factory; readers
// of saved files (poppler's tools, MuPDF with every stream inflated); hand-written PDF files;
// annotation entries as the plug-in writes them and word positions as a text finder gives them.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/annotations.h"
#include "engine/context.h"
#include "engine/document.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_object_number.h"
#include "engine/pdf_factory.h"
#include "engine/pdf_value.h"
#include "engine/redaction.h"

namespace pdfhost::engine::testing_support {

inline std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// Standard output of a shell command (an independent PDF reader, for example).
inline std::string RunCommand(const std::string& command) {
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::string output;
    for (int c = 0; pipe && (c = std::fgetc(pipe.get())) != EOF;)
        output += static_cast<char>(c);
    return output;
}

// What poppler's pdftotext reads from a file.
inline std::string PdfToText(const std::string& path) {
    return RunCommand("pdftotext -q '" + path + "' -");
}

// What poppler's pdfinfo says of a file, errors included.
inline std::string PdfInfo(const std::string& path) {
    return RunCommand("pdfinfo '" + path + "' 2>&1");
}

// A test name made of a case's description: letters and digits kept, the rest "_".
inline std::string CaseName(std::string_view description) {
    std::string name;
    for (const char c : description)
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

// A fresh folder per test under the test temporary folder, with a context and a factory.
class EngineTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::path(::testing::TempDir()) / "pdfhost-engine" /
                  (std::string(info->test_suite_name()) + "." + info->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string PathOf(const std::string& name) const { return (folder_ / name).string(); }

    std::string WritePdf(const std::string& name, const PdfDescription& recipe) {
        const std::string path = PathOf(name);
        factory_.Write(recipe, path);
        return path;
    }

    // `bytes` written as `name` and opened.
    Document OpenBytes(const std::string& bytes, const std::string& name = "in.pdf") {
        WriteBytes(PathOf(name), bytes);
        return Document::Open(context_, PathOf(name));
    }
    // The document of `recipe`, written as `name` and opened.
    Document OpenWritten(const PdfDescription& recipe, const std::string& name = "doc.pdf") {
        return Document::Open(context_, WritePdf(name, recipe));
    }
    // Saves `document` as `name` in the test folder; returns the path.
    std::string Saved(Document& document, const std::string& name = "out.pdf") {
        document.SaveFull(PathOf(name));
        return PathOf(name);
    }
    // A document of one page of text `lines`.
    static PdfDescription TextPage(const std::vector<std::string>& lines) {
        return PdfDescription{.pages = {PageDescription::TextLines(lines)}};
    }

    std::filesystem::path folder_;
    Context context_;
    PdfFactory factory_{context_};
};

// Hand-written PDF files for the cases the factory does not make (patterns, Type 3 fonts,
// inline images, annotations and fields with their own appearances): objects as PDF text,
// numbered from 1 in the order added, written with a correct cross-reference table.
class RawPdf {
  public:
    // Adds an object given as PDF text (a dictionary, array, ...); returns its number.
    int Add(std::string body) {
        objects_.push_back(std::move(body));
        return static_cast<int>(objects_.size());
    }
    // Adds a stream with `dict` entries (without /Length) and unfiltered `data`.
    int AddStream(const std::string& dict, const std::string& data) {
        return Add("<< " + dict + " /Length " + std::to_string(data.size()) + " >>\nstream\n" +
                   data + "\nendstream");
    }
    // Replaces the text of an object added before (to close reference cycles).
    void Set(int number, std::string body) { objects_.at(number - 1) = std::move(body); }

    std::string Bytes(int root, const std::string& trailerExtra = {}) const {
        std::string out = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";
        std::vector<std::size_t> offsets;
        for (std::size_t i = 0; i < objects_.size(); ++i) {
            offsets.push_back(out.size());
            out += std::to_string(i + 1) + " 0 obj\n" + objects_[i] + "\nendobj\n";
        }
        const std::size_t xref = out.size();
        out += "xref\n0 " + std::to_string(objects_.size() + 1) + "\n0000000000 65535 f \n";
        for (const std::size_t offset : offsets) {
            char line[32];
            std::snprintf(line, sizeof line, "%010zu 00000 n \n", offset);
            out += line;
        }
        out += "trailer\n<< /Size " + std::to_string(objects_.size() + 1) + " /Root " +
               std::to_string(root) + " 0 R " + trailerExtra + " >>\nstartxref\n" +
               std::to_string(xref) + "\n%%EOF\n";
        return out;
    }

  private:
    std::vector<std::string> objects_;
};

inline std::string Ref(int number) {
    return std::to_string(number) + " 0 R";
}

// A document of US-Letter pages, each with its content, resources and /Annots text (either
// may be empty); an /AcroForm text may be given for the catalog. Returns the file's bytes.
struct RawPage {
    std::string content{};
    std::string resources =
        "<< /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
        ">> >> >>";
    std::string annots{};
    std::string extra{};  // more entries of the page dictionary
};

inline std::string RawDocument(RawPdf& pdf, const std::vector<RawPage>& pages,
                               const std::string& acroForm = {},
                               const std::string& catalogExtra = {}) {
    const int pagesObject = pdf.Add("");
    std::string kids;
    for (const RawPage& page : pages) {
        const int content = pdf.AddStream("", page.content);
        std::string dict = "<< /Type /Page /Parent " + Ref(pagesObject) +
                           " /MediaBox [0 0 612 792] /Contents " + Ref(content) + " /Resources " +
                           page.resources;
        if (!page.annots.empty())
            dict += " /Annots " + page.annots;
        kids += Ref(pdf.Add(dict + page.extra + " >>")) + " ";
    }
    pdf.Set(pagesObject,
            "<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(pages.size()) + " >>");
    std::string catalog = "<< /Type /Catalog /Pages " + Ref(pagesObject);
    if (!acroForm.empty())
        catalog += " /AcroForm " + acroForm;
    return pdf.Bytes(pdf.Add(catalog + catalogExtra + " >>"));
}

// The tag the tests give references to their document.
inline constexpr std::uintptr_t kDocumentTag = 7;

inline PdfValue Numbers(std::initializer_list<float> values) {
    PdfValue array = PdfValue::Array();
    for (const float value : values)
        array.Push(PdfValue::Real(value));
    return array;
}

// A Highlight or Redact annotation of a text match, with the entries and in the order the
// plug-in sets them: one quadrilateral per rectangle, corners lower left, lower right, upper
// left, upper right.
inline PdfValue MatchAnnotation(Document& document, int page, const std::string& subtype,
                                const std::vector<Rect>& rects, const std::string& name) {
    const bool redact = subtype == "Redact";
    PdfValue dict = PdfValue::Dictionary();
    dict.Set("Type", PdfValue::Name("Annot"));
    dict.Set("Subtype", PdfValue::Name(subtype));
    Rect all = rects.front();
    for (const Rect& r : rects)
        all = Rect{std::min(all.left, r.left), std::min(all.bottom, r.bottom),
                   std::max(all.right, r.right), std::max(all.top, r.top)};
    dict.Set("Rect", Numbers({all.left, all.bottom, all.right, all.top}));
    dict.Set("F", PdfValue::Integer(4));
    PdfValue quads = PdfValue::Array();
    for (const Rect& r : rects) {
        for (const float v : {r.left, r.bottom, r.right, r.bottom, r.left, r.top, r.right, r.top})
            quads.Push(PdfValue::Real(v));
    }
    dict.Set("QuadPoints", quads);
    dict.Set("C", redact ? Numbers({1, 0, 0}) : Numbers({1, 1, 0}));
    if (redact)
        dict.Set("IC", Numbers({0, 0, 0}));
    dict.Set("Subj", PdfValue::String(redact ? "Redact" : "Highlight"));
    dict.Set("P", PdfValue::Reference(PageObjectNumber(document, page), kDocumentTag));
    if (!redact)
        dict.Set("Contents", PdfValue::String("a comment"));
    dict.Set("NM", PdfValue::String(name));
    return dict;
}

// A Redact annotation over `rects` of `page`, put at `index` of the page's annotations.
inline AnnotationId AddRedact(Document& document, int page, const std::vector<Rect>& rects,
                              const std::string& name = "box", int index = -1) {
    return Annotations(document).Create(
        page, MatchAnnotation(document, page, "Redact", rects, name), kDocumentTag, index);
}

// Applies `boxes` and saves the document as `path`, which it returns.
inline std::string ApplyAndSave(Document& document, const std::vector<AnnotationId>& boxes,
                                const std::string& path, RedactionOptions options = {}) {
    Redactor(document).Apply(boxes, options);
    document.SaveFull(path);
    return path;
}

// The rectangles (PDF page space) of the first occurrence of `word` on an unrotated page whose
// box starts at the origin, one per line, as character boxes.
inline std::vector<Rect> WordRects(Document& document, int page, const std::string& word) {
    fz_context* ctx = document.fz();
    const Rect box = document.PageBox(page);
    std::vector<Rect> rects;
    fz_quad quads[8];
    const PagePtr loaded = document.LoadPage(page, "load page");
    const int found = CallMupdf(ctx, "search", [&] {
        return fz_search_page(ctx, &loaded.get()->super, word.c_str(), nullptr, quads, 8);
    });
    for (int i = 0; i < found; ++i) {
        const fz_rect r = fz_rect_from_quad(quads[i]);
        rects.push_back(Rect{r.x0, box.top - r.y1, r.x1, box.top - r.y0});
    }
    return rects;
}

// The whole file with every stream inflated, as MuPDF writes it: a text that is not in these
// bytes is nowhere in the file. `withoutXfa` leaves the form's XFA packets out.
inline std::string InflatedBytes(Context& context, const std::string& path,
                                 bool withoutXfa = false) {
    Document reopened = Document::Open(context, path);
    fz_context* ctx = reopened.fz();
    BufferPtr buffer(ctx, CallMupdf(ctx, "buffer", [&] { return fz_new_buffer(ctx, 4096); }));
    CallMupdf(ctx, "inflate", [&] {
        fz_output* out = fz_new_output_with_buffer(ctx, buffer.get());
        fz_try(ctx) {
            pdf_obj* form = pdf_dict_getp(ctx, pdf_trailer(ctx, reopened.pdf()), "Root/AcroForm");
            if (withoutXfa && pdf_is_dict(ctx, form))
                pdf_dict_del(ctx, form, PDF_NAME(XFA));
            pdf_write_options options = pdf_default_write_options;
            options.do_decompress = 1;
            options.do_garbage = 1;
            pdf_write_document(ctx, reopened.pdf(), out, &options);
            fz_close_output(ctx, out);
        }
        fz_always(ctx) fz_drop_output(ctx, out);
        fz_catch(ctx) fz_rethrow(ctx);
    });
    unsigned char* data = nullptr;
    const std::size_t size = fz_buffer_storage(ctx, buffer.get(), &data);
    return std::string(reinterpret_cast<const char*>(data), size);
}

// The grey value (0 black .. 255 white) of the point (x, y) in PDF page space of page 1 of a
// file of US-Letter pages, as poppler's renderer draws it at 72 dpi.
inline int GreyAt(const std::string& path, float x, float y) {
    const std::string out = path + ".grey";
    RunCommand("pdftoppm -q -r 72 -gray -f 1 -l 1 -singlefile '" + path + "' '" + out + "'");
    const std::string bytes = ReadBytes(out + ".pgm");
    std::remove((out + ".pgm").c_str());
    // "P5\n<w> <h>\n255\n" then one byte per pixel, rows from the top.
    int width = 0, height = 0, max = 0, header = 0;
    if (std::sscanf(bytes.c_str(), "P5 %d %d %d%n", &width, &height, &max, &header) != 3)
        return -1;
    const int column = static_cast<int>(x);
    const int row = height - 1 - static_cast<int>(y);
    const std::size_t at = static_cast<std::size_t>(header + 1) +
                           static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                           static_cast<std::size_t>(column);
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : -1;
}

}  // namespace pdfhost::engine::testing_support

namespace pdfhost::engine {
// The engine's tests use their helpers unqualified.
using namespace testing_support;
}  // namespace pdfhost::engine
