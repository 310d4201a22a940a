// Hand-written PDF files for the cases the factory does not make (patterns, Type 3 fonts,
// inline images, annotations and fields with their own appearances): objects as PDF text,
// numbered from 1 in the order added, written with a correct cross-reference table.
#pragma once

#include <string>
#include <vector>

#include "engine_test_support.h"

namespace pdfhost::engine::testing_support {

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
    std::string content;
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

}  // namespace pdfhost::engine::testing_support
