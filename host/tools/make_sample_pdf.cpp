// Writes pdfhost's sample document: three pages of made-up personal records as text, then a
// page holding a picture. Usage: make_sample_pdf OUT.pdf
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "engine/context.h"
#include "engine/pdf_description.h"
#include "engine/pdf_factory.h"

namespace {

using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;

PdfDescription SampleSpec() {
    PdfDescription recipe;
    recipe.pages.push_back(PageDescription::TextLines({
        "Customer record - Orchard Lane Insurance",
        "Name: Marta Quillfeather",
        "E-mail: marta.quillfeather@example.com",
        "Phone: +1 555 0134 2287",
        "Date of birth: 1984-03-17",
        "Card number: 4539 1488 0343 6467",
        "IBAN: DE89 3704 0044 0532 0130 00",
        "Policy holder since 2011; no claims in the last five years.",
    }));
    recipe.pages.push_back(PageDescription::TextLines({
        "Staff directory - Harbour Street office",
        "Tobias Fennick, tobias.fennick@example.org, phone (555) 201-7788",
        "Born 12/05/1979, employee number HS-20417",
        "Ingrid Solvay, ingrid.solvay@example.net, phone 555-303-4412",
        "Born 28 February 1991, employee number HS-31108",
        "Emergency contact for both: +44 20 7946 0958",
    }));
    recipe.pages.push_back(PageDescription::TextLines({
        "Payment authorisation",
        "Account holder: Piet van Brakel",
        "IBAN: GB82 WEST 1234 5698 7654 32",
        "Card: 5555 5555 5555 4444, expires 09/27",
        "Contact: piet.vanbrakel@example.com or +31 20 555 0199",
        "Date of birth: 1969-11-02",
        "Signed in Rotterdam on 2 January 2024.",
    }));
    recipe.pages.push_back(PageDescription::ImageOnly(7));
    recipe.info = {
        {"Title", "Sample personal records"},
        {"Author", "pdfhost"},
        {"CreationDate", "D:20240102030405+01'00'"},
        {"ModDate", "D:20240215101112+01'00'"},
    };
    return recipe;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_sample_pdf OUT.pdf\n";
        return 2;
    }
    try {
        pdfhost::engine::Context context;
        pdfhost::engine::PdfFactory(context).Write(SampleSpec(), argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "make_sample_pdf: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
