// Removing hidden copies of redacted text: finding and cutting it in PDF strings and XML (case,
// whitespace, encodings; bytes around a cut, binary strings and markup never change), then one
// generated file per place where a document can hold text besides its pages, each checked after
// a full save by the leak checker (raw and inflated bytes, pdftotext), by poppler's pdfinfo and
// by MuPDF opening it again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <optional>
#include <string>
#include <string_view>

#include "engine/hidden_text_scrubber.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/pdf_text_string.h"
#include "engine/permissions.h"
#include "engine/removed_text_matcher.h"
#include "engine/xml_text_scrub.h"
#include "engine_test_support.h"
#include "leak_check.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(RemovedTextMatcherTest, CutsWithoutCaseAndAcrossWhitespace) {
    const RemovedTextMatcher matcher({U"Ana Lind", U"  ", U"Lind", U"ana lind berg"});
    const std::pair<std::u32string, std::u32string> cases[] = {
        {U"to ANA LIND now", U"to  now"},
        {U"to Ana\n\t Lind", U"to "},
        {U"Ana Lind Berg!", U"!"},  // the longest text that matches wins
        {U"Lindgren", U"gren"},     // inside a word too
        {U"Anna Lind", U"Anna "},   // what does not match stays
        {U"ÄNA LIND", U"ÄNA "},     // letters differ: only "Lind" goes
        {U"", U""},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(matcher.Erase(text), expected);
    EXPECT_TRUE(RemovedTextMatcher({U" \t"}).Empty()) << "whitespace alone removes nothing";
}

TEST(RemovedTextMatcherTest, FindsTextInBytesOfEveryEncoding) {
    const RemovedTextMatcher matcher({U"Lind"});
    // UTF-16 either way round, from an even or an odd place.
    const std::string held[] = {"x LIND y", "\377\376L\0i\0n\0d\0"s, "\xfe\xff\0L\0i\0n\0d"s,
                                "\0\0\0L\0i\0n\0d"s, "xL\0i\0n\0d\0"s};
    for (const std::string& bytes : held)
        EXPECT_TRUE(matcher.OccursInBytes(bytes)) << bytes;
    EXPECT_FALSE(matcher.OccursInBytes("L i n d, Lin d"));
}

TEST(PdfTextStringTest, CutsOnlyTheMatchAndKeepsEveryOtherByte) {
    const RemovedTextMatcher matcher({U"Ana Lind", U"é"});
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {"Dear Ana Lind,", "Dear ,"},
        {"caf\xe9 \x95 Ana LIND", "caf \x95 "},                    // PDFDoc
        {"\xfe\xff\0A\0n\0a\0 \0L\0i\0n\0d\0!"s, "\xfe\xff\0!"s},  // UTF-16BE
        {"\xfe\xff\xd8\x3d\xde\x00\0A\0N\0A\0 \0l\0i\0n\0d"s, "\xfe\xff\xd8\x3d\xde\x00"s},
        {"\357\273\277caf\303\251", "\357\273\277caf"},  // UTF-8
        {"nothing here", std::nullopt},                  // untouched
        {"\001\002Ana Lind", std::nullopt},              // binary
        {"\xfe\xff\0A\0"s, std::nullopt},
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(ScrubPdfText(bytes, matcher), expected) << bytes;
}

TEST(XmlTextScrubTest, CutsValuesAndKeepsTheMarkup) {
    const RemovedTextMatcher matcher({U"lind", U"dc"});
    EXPECT_EQ(ScrubXmlText("<dc:creator dc:a='Ana Lind' b=\"LIND\">Ana Lind<!-- lind -->"
                           "<![CDATA[lind]]></dc:creator>",
                           matcher),
              "<dc:creator dc:a='Ana ' b=\"\">Ana <!--  --><![CDATA[]]></dc:creator>");
    EXPECT_EQ(ScrubXmlText("<a:b c='x'>nothing</a:b>", matcher), std::nullopt);
    EXPECT_EQ(ScrubXmlText("<a b='lind", matcher), "<a b='") << "a truncated packet";
}

const std::vector<std::u32string> kRemoved = {U"Ana Lind", U"ana@example.com"};
const std::vector<std::string> kRemovedUtf8 = {"Ana Lind", "ana@example.com"};

// A one-page document as PDF text ("Quarterly report", "Page text"; the page is object 3) to
// which a case adds objects, catalog and Info entries and page annotations.
struct Plant {
    explicit Plant(fz_context* context) : ctx(context) {
        pdf.Add("<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
        pdf.AddStream("",
                      "BT /F1 12 Tf 72 720 Td (Quarterly report) Tj 0 -18 Td (Page text) Tj ET");
        pdf.Add("");
    }
    // A deflated stream of `data`.
    int Stream(const std::string& dict, std::string_view data) {
        std::size_t size = 0;
        unsigned char* packed = CallMupdf(ctx, "deflate", [&] {
            return fz_new_deflated_data(ctx, &size,
                                        reinterpret_cast<const unsigned char*>(data.data()),
                                        data.size(), FZ_DEFLATE_BEST);
        });
        const std::string bytes(reinterpret_cast<const char*>(packed), size);
        fz_free(ctx, packed);
        return pdf.AddStream(dict + " /Filter /FlateDecode", bytes);
    }
    std::string Bytes() {
        pdf.Set(3,
                "<< /Type /Page /Parent 1 0 R /MediaBox [0 0 612 792] /Contents 2 0 R /Resources " +
                    RawPage{}.resources + " /Annots [" + annots + "] >>");
        const int root = pdf.Add("<< /Type /Catalog /Pages 1 0 R " + catalog + " >>");
        return pdf.Bytes(root, info.empty() ? "" : "/Info " + Ref(pdf.Add("<< " + info + " >>")));
    }

    fz_context* ctx;
    RawPdf pdf;
    std::string catalog, annots, info;
};
using Planter = void (*)(Plant&);

// An annotation on the page with more `entries`.
void Note(Plant& p, const std::string& subtype, const std::string& entries) {
    p.annots += Ref(p.pdf.Add("<< /Type /Annot /Subtype /" + subtype +
                              " /Rect [72 72 200 100] /DA (/Helv 10 Tf 0 g) " + entries + " >>")) +
                " ";
}

// A text field with `entries` whose appearance shows `shown`; `form` adds to the form.
void Field(Plant& p, const std::string& entries, const std::string& shown,
           const std::string& form = {}) {
    const int ap = p.Stream("/Subtype /Form /BBox [0 0 228 20]",
                            "/Tx BMC BT /Helv 10 Tf 2 5 Td (" + shown + ") Tj ET EMC");
    const int field = p.pdf.Add(
        "<< /Type /Annot /Subtype /Widget /FT /Tx /T (client) /DA (/Helv 10 Tf 0 g) /Rect [72 600 "
        "300 620] " +
        entries + " /AP << /N " + Ref(ap) + " >> >>");
    p.annots += Ref(field) + " ";
    p.catalog += " /AcroForm << /Fields [" + Ref(field) + "] " + form + " >>";
}

// An attached file in the document's EmbeddedFiles name tree; a damaged one claims a filter
// its bytes do not have.
void Attachment(Plant& p, const std::string& name, std::string_view content, bool damaged = false) {
    const int file =
        damaged ? p.pdf.AddStream("/Type /EmbeddedFile /Filter /FlateDecode", std::string(content))
                : p.Stream("/Type /EmbeddedFile", content);
    const int filespec = p.pdf.Add("<< /Type /Filespec /F (" + name + ") /UF (" + name +
                                   ") /EF << /F " + Ref(file) + " >> >>");
    p.catalog += " /Names << /EmbeddedFiles << /Names [(" + name + ") " + Ref(filespec) + "] >> >>";
}

void Outline(Plant& p, const std::string& title) {
    const int outlines = p.pdf.Add("");
    const int item =
        p.pdf.Add("<< /Title (" + title + ") /Parent " + Ref(outlines) + " /Dest [3 0 R /Fit] >>");
    p.pdf.Set(outlines,
              "<< /Type /Outlines /First " + Ref(item) + " /Last " + Ref(item) + " /Count 1 >>");
    p.catalog += " /Outlines " + Ref(outlines);
}

struct HiddenPlace {
    const char* name;
    Planter plant;
};

const HiddenPlace kHiddenPlaces[] = {
    {"InfoTitle", [](Plant& p) { p.info = "/Title (Report on ANA LIND)"; }},
    {"InfoAuthorUtf16",  // "Анна / ana lind"
     [](Plant& p) {
         p.info =
             "/Author <FEFF 0410 043D 043D 0430 0020 002F 0020 0061 006E 0061 0020 006C 0069 "
             "006E 0064>";
     }},
    {"InfoKeywordsAcrossLines", [](Plant& p) { p.info = "/Keywords (x, Ana\\n  Lind, y)"; }},
    {"XmpMetadata",
     [](Plant& p) {
         p.catalog =
             "/Metadata " + Ref(p.Stream("/Type /Metadata /Subtype /XML",
                                         "<?xpacket begin='' id='W5M0'?><x:xmpmeta "
                                         "xmlns:x='adobe:ns:meta/'><dc:creator "
                                         "dc:note='by Ana Lind'>Ana Lind</dc:creator>"
                                         "<!-- Ana Lind --></x:xmpmeta><?xpacket end='w'?>"));
     }},
    {"DamagedXmp",
     [](Plant& p) {
         p.catalog = "/Metadata " +
                     Ref(p.pdf.AddStream("/Type /Metadata /Subtype /XML /Filter /FlateDecode",
                                         "not deflated: Ana Lind"));
     }},
    {"OutlineTitle", [](Plant& p) { Outline(p, "Chapter: Ana Lind"); }},
    {"NoteContents", [](Plant& p) { Note(p, "Text", "/Contents (call ana lind)"); }},
    {"NoteAuthor", [](Plant& p) { Note(p, "Text", "/T (Ana Lind)"); }},
    {"NoteSubject", [](Plant& p) { Note(p, "Text", "/Subj (About Ana Lind)"); }},
    {"NoteRichText",
     [](Plant& p) { Note(p, "FreeText", "/RC (<body><p style='x'>Dear Ana Lind</p></body>)"); }},
    {"LinkUri",
     [](Plant& p) {
         Note(p, "Link", "/Contents (link) /A << /S /URI /URI (mailto:ana@example.com) >>");
     }},
    {"JavaScriptString",
     [](Plant& p) { p.catalog = "/OpenAction << /S /JavaScript /JS (app.alert('Ana Lind');) >>"; }},
    {"JavaScriptStream",
     [](Plant& p) {
         p.catalog = "/OpenAction << /S /JavaScript /JS " +
                     Ref(p.Stream("", "app.alert('ANA LIND');\n")) + " >>";
     }},
    {"FieldValue", [](Plant& p) { Field(p, "/V (Ana Lind)", "Ana Lind"); }},
    {"FieldDefault", [](Plant& p) { Field(p, "/DV (Ana Lind)", "Ana Lind"); }},
    {"FieldTooltip", [](Plant& p) { Field(p, "/TU (Name of Ana Lind)", "Name of Ana Lind"); }},
    {"FieldExportValues",
     [](Plant& p) { Field(p, "/V (x) /Opt [[(ana@example.com) (Ana Lind)]]", "x"); }},
    {"XfaPacket",
     [](Plant& p) {
         const int xfa = p.Stream(
             "", "<xfa:datasets><client name=\"Ana Lind\">Ana Lind</client></xfa:datasets>");
         Field(p, "/V (x)", "x", "/XFA [(datasets) " + Ref(xfa) + "]");
     }},
    {"StructureTree",
     [](Plant& p) {
         p.catalog =
             "/StructTreeRoot << /K << /S /P /Alt (photo of Ana Lind) /ActualText "
             "(Ana Lind) /E (Ana Lind) >> >>";
     }},
    {"PageLabel", [](Plant& p) { p.catalog = "/PageLabels << /Nums [0 << /P (Ana Lind-) >>] >>"; }},
    {"AttachmentName", [](Plant& p) { Attachment(p, "ana lind.txt", "harmless"); }},
    {"AttachmentContentUtf8", [](Plant& p) { Attachment(p, "a.txt", "to: Ana Lind"); }},
    {"AttachmentContentUtf16",
     [](Plant& p) { Attachment(p, "b.txt", "\377\376A\0N\0A\0 \0l\0i\0n\0d\0"sv); }},
    {"AttachmentDamaged", [](Plant& p) { Attachment(p, "c.txt", "raw Ana Lind", true); }},
    {"FreeTextAppearance",
     [](Plant& p) {
         const int ap = p.pdf.AddStream("/Subtype /Form /BBox [0 0 128 28]",
                                        "BT /Helv 10 Tf 2 5 Td (Ana Lind) Tj ET");
         Note(p, "FreeText", "/Contents (see note) /AP << /N " + Ref(ap) + " >>");
     }},
};

class HiddenTextScrubberTest : public EngineTest,
                               public ::testing::WithParamInterface<HiddenPlace> {
  protected:
    // The document with `plant` applied, written as planted.pdf.
    std::string Planted(Planter plant) {
        Plant p(context_.get());
        plant(p);
        WriteBytes(PathOf("planted.pdf"), p.Bytes());
        return PathOf("planted.pdf");
    }
    // `document` scrubbed and saved as scrubbed.pdf.
    std::string Scrubbed(Document document, const std::vector<std::u32string>& removed = kRemoved) {
        HiddenTextScrubber(document, removed).Run();
        document.SaveFull(PathOf("scrubbed.pdf"));
        return PathOf("scrubbed.pdf");
    }
    std::string PdfInfoStatus(const std::string& path) {
        return RunCommand("pdfinfo '" + path + "' 2>&1 >/dev/null; echo $?");
    }
};

TEST_P(HiddenTextScrubberTest, RemovedTextLeavesThePlaceAndTheFileStaysValid) {
    const std::string planted = Planted(GetParam().plant);
    ASSERT_NE(leak_check::Leaks(planted, kRemovedUtf8), "") << "the case plants nothing";

    const std::string path = Scrubbed(Document::Open(context_, planted));
    EXPECT_EQ(leak_check::Leaks(path, kRemovedUtf8), "");
    EXPECT_EQ(PdfInfoStatus(path), "0\n") << "poppler reads the file without an error";
    EXPECT_EQ(Document::Open(context_, path).PageCount(), 1);
    EXPECT_THAT(PdfToText(path), HasSubstr("Quarterly report"))
        << "the page's own text is not touched";
}

INSTANTIATE_TEST_SUITE_P(Places, HiddenTextScrubberTest, ::testing::ValuesIn(kHiddenPlaces),
                         [](const auto& info) { return std::string(info.param.name); });

// The raw bytes of a string at `path` from the trailer ("Info/Title", "Root/AcroForm/Fields/0/V":
// numbers index arrays); empty when there is none.
std::string StringAt(Document& document, const std::string& path) {
    fz_context* ctx = document.fz();
    pdf_obj* value = pdf_trailer(ctx, document.pdf());
    size_t at = 0;
    while (at <= path.size() && value != nullptr) {
        const size_t end = std::min(path.find('/', at), path.size());
        const std::string step = path.substr(at, end - at);
        value = CallMupdf(ctx, "step", [&] {
            return std::isdigit(static_cast<unsigned char>(step[0]))
                       ? pdf_array_get(ctx, value, std::stoi(step))
                       : pdf_dict_gets(ctx, value, step.c_str());
        });
        at = end + 1;
    }
    return std::string(pdf_to_str_buf(ctx, value), pdf_to_str_len(ctx, value));
}

// The decoded content of the first attached file.
std::string FirstAttachment(Document& document) {
    fz_context* ctx = document.fz();
    BufferPtr buffer(ctx, CallMupdf(ctx, "attachment", [&] {
                         pdf_obj* names = pdf_dict_getp(ctx, pdf_trailer(ctx, document.pdf()),
                                                        "Root/Names/EmbeddedFiles/Names");
                         pdf_obj* file = pdf_dict_getp(ctx, pdf_array_get(ctx, names, 1), "EF/F");
                         return file ? pdf_load_stream(ctx, file) : nullptr;
                     }));
    if (!buffer)
        return {};
    unsigned char* data = nullptr;
    const size_t size = fz_buffer_storage(ctx, buffer.get(), &data);
    return std::string(reinterpret_cast<const char*>(data), size);
}

class ScrubberKeepsTest : public HiddenTextScrubberTest {};

TEST_F(ScrubberKeepsTest, WhatHoldsNoRemovedTextStaysByteForByte) {
    Document document =
        Document::Open(context_, Planted([](Plant& p) {
                           p.info = "/Title (Annual figures) /Author (Ana Lind)";
                           Outline(p, "Contents");
                           Attachment(p, "figures.csv", "a,b\n1,2\n");
                           // "А note" in UTF-16
                           Note(p, "Text", "/Contents <FEFF0410 0020 006E006F00740065>");
                       }));
    const char* const kKept[] = {"Info/Title", "Root/Outlines/First/Title",
                                 "Root/Pages/Kids/0/Annots/0/Contents"};
    std::vector<std::string> before;
    for (const char* path : kKept)
        before.push_back(StringAt(document, path));
    const std::string attachment = FirstAttachment(document);
    ASSERT_FALSE(before[2].empty());

    const ScrubCounts counts = HiddenTextScrubber(document, kRemoved).Run();
    EXPECT_EQ(counts.strings, 1);
    EXPECT_EQ(counts.files, 0);
    Document reopened = Document::Open(context_, Saved(document, "scrubbed.pdf"));
    EXPECT_EQ(StringAt(reopened, "Info/Author"), "");
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(StringAt(reopened, kKept[i]), before[i]) << kKept[i];
    EXPECT_EQ(FirstAttachment(reopened), attachment);
}

TEST_F(ScrubberKeepsTest, KeyNamesOperatorsAndSingleLettersChangeOnlyStrings) {
    Document document = Document::Open(context_, Planted([](Plant& p) {
                                           p.info = "/Title (The Type of Tj)";
                                           Field(p, "/V (type here)", "type here");
                                       }));
    const ScrubCounts counts =
        HiddenTextScrubber(document, {U"Tj", U"Type", U"e", U"Tf", U"Helv"}).Run();
    EXPECT_GE(counts.strings, 2);
    const std::string path = Saved(document, "scrubbed.pdf");
    EXPECT_EQ(PdfInfoStatus(path), "0\n");
    Document reopened = Document::Open(context_, path);
    EXPECT_EQ(reopened.PageCount(), 1) << "/Type /Page and /Type /Catalog are names: kept";
    EXPECT_EQ(StringAt(reopened, "Info/Title"), "Th  of ");
    EXPECT_EQ(StringAt(reopened, "Root/AcroForm/Fields/0/V"), " hr");
    EXPECT_EQ(StringAt(reopened, "Root/AcroForm/Fields/0/DA"), "/Helv 10 Tf 0 g")
        << "a default appearance is operators, not text";
    EXPECT_THAT(PdfToText(path), HasSubstr("Page text"))
        << "content streams keep their operators and text";
}

TEST_F(ScrubberKeepsTest, EncryptedDocumentKeepsItsEncryption) {
    const std::string path = Scrubbed(Document::Open(
        context_,
        WritePdf("encrypted.pdf",
                 PdfDescription{.pages = {PageDescription::TextLines({"Page text"})},
                                .info = {{"Title", "Ana Lind file"}},
                                .encryption = Encryption{.owner_password = "owner",
                                                         .permissions = permission::kAll}})));
    Document reopened = Document::Open(context_, path);
    EXPECT_TRUE(reopened.IsEncrypted());
    EXPECT_EQ(reopened.InfoString("Title"), " file");
    // The checker reads bytes: give it a decrypted copy of the saved file.
    const std::string plain = PathOf("plain.pdf");
    fz_context* ctx = reopened.fz();
    CallMupdf(ctx, "decrypted copy", [&] {
        pdf_write_options options = pdf_default_write_options;
        options.do_encrypt = PDF_ENCRYPT_NONE;
        options.do_decompress = 1;
        pdf_save_document(ctx, reopened.pdf(), plain.c_str(), &options);
    });
    EXPECT_EQ(leak_check::Leaks(plain, kRemovedUtf8), "");
}

}  // namespace
}  // namespace pdfhost::engine
