// Writes pdfhost's sample documents of made-up personal data. Usage: make_sample_pdf NAME OUT.pdf,
// NAME "records" (three pages of personal records, then a page holding a picture) or "letter"
// (a two-page employment letter).
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

PdfDescription RecordsSample() {
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

PdfDescription LetterSample() {
    PdfDescription recipe;
    recipe.pages.push_back(PageDescription::TextLines({
        "Northgate Logistics Ltd - Human Resources",
        "14 Quayside Row, Dunmore",
        "",
        "To: Elena Varga-Holm",
        "Home address: 7 Larkspur Close, Dunmore",
        "Private e-mail: elena.vargaholm@example.com",
        "Mobile: +44 7700 900461",
        "",
        "Dear Ms Varga-Holm,",
        "We confirm your employment as Senior Planner from 1 March 2023.",
        "Your salary is paid to IBAN NL91 ABNA 0417 1643 00.",
        "For the pension scheme we hold your date of birth as 23/07/1988",
        "and your social security number as 536-22-4107.",
    }));
    recipe.pages.push_back(PageDescription::TextLines({
        "Corporate card",
        "A corporate card ending 0004 was issued: 4000 0566 5566 5556.",
        "Questions go to payroll@example.org or (555) 014-2290.",
        "",
        "Kind regards,",
        "Jonas Pemberly, HR Manager",
        "DOB on file for Jonas Pemberly: 1975-09-30",
        "Reference HR-2023-0117, printed 12 April 2023.",
    }));
    recipe.info = {
        {"Title", "Employment letter"},
        {"Author", "pdfhost"},
        {"CreationDate", "D:20230412090000+01'00'"},
    };
    return recipe;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string name = argc == 3 ? argv[1] : "";
    if (name != "records" && name != "letter") {
        std::cerr << "usage: make_sample_pdf records|letter OUT.pdf\n";
        return 2;
    }
    try {
        pdfhost::engine::Context context;
        pdfhost::engine::PdfFactory(context).Write(
            name == "records" ? RecordsSample() : LetterSample(), argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "make_sample_pdf: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
