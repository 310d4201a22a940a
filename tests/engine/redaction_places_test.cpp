// What lies under a Redact box is gone from every place the file can hold it: the saved file is
// searched (streams inflated) for the removed text, read by poppler, and opened again by MuPDF.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "annot_test_support.h"
#include "engine/redaction.h"
#include "raw_pdf.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::EngineTest;
using testing_support::InflatedBytes;
using testing_support::kDocumentTag;
using testing_support::MatchAnnotation;
using testing_support::PdfToText;
using testing_support::RawDocument;
using testing_support::RawPage;
using testing_support::RawPdf;
using testing_support::Ref;
using testing_support::RunCommand;
using testing_support::WriteBytes;

// A text-showing operation in Helvetica at (x, y), 12 pt.
std::string Show(float x, float y, const std::string& text, const std::string& extra = {}) {
    return "BT /F1 12 Tf " + extra + " " + std::to_string(x) + " " + std::to_string(y) + " Td (" +
           text + ") Tj ET\n";
}

const std::string kHelvetica = "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>";

// A coloured tiling pattern of 200 x 40 whose tile shows `text` in the font object `font`;
// `matrix` is extra dictionary text such as "/Matrix [...] ".
int TextTilePattern(RawPdf& pdf, int font, const std::string& text,
                    const std::string& matrix = {}) {
    return pdf.AddStream(
        "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 200 40] "
        "/XStep 200 /YStep 40 " +
            matrix + "/Resources << /Font << /F1 " + Ref(font) + " >> >>",
        Show(5, 15, text));
}

struct Place {
    const char* name;
    // Builds the file; the box (PDF page space) covers the secret on page 1.
    std::string (*build)(RawPdf&);
    Rect box;
    const char* secret;
    const char* kept;  // text outside the box that stays (in pdftotext's output)
};

const Place kPlaces[] = {
    {"page text",
     [](RawPdf& pdf) {
         return RawDocument(pdf, {{Show(72, 700, "pagesecret") + Show(72, 600, "pagekept")}});
     },
     Rect{60, 690, 200, 715}, "pagesecret", "pagekept"},
    {"invisible OCR text",
     [](RawPdf& pdf) {
         return RawDocument(pdf, {{Show(72, 700, "ocrsecret", "3 Tr") + Show(72, 600, "ocrkept")}});
     },
     Rect{60, 690, 200, 715}, "ocrsecret", "ocrkept"},
    {"form XObject",
     [](RawPdf& pdf) {
         const int font = pdf.Add(kHelvetica);
         const int form = pdf.AddStream(
             "/Type /XObject /Subtype /Form /BBox [0 0 300 100] /Resources << /Font << /F1 " +
                 Ref(font) + " >> >>",
             Show(10, 50, "xobjsecret") + Show(200, 50, "xobjkept"));
         return RawDocument(pdf, {{"q 1 0 0 1 62 650 cm /X1 Do Q\n",
                                   "<< /XObject << /X1 " + Ref(form) + " >> >>"}});
     },
     Rect{60, 690, 160, 715}, "xobjsecret", "xobjkept"},
    {"tiling pattern",
     [](RawPdf& pdf) {
         const int font = pdf.Add(kHelvetica);
         const int pattern = TextTilePattern(pdf, font, "patternsecret");
         return RawDocument(
             pdf,
             {{"/Pattern cs /P1 scn 72 690 200 40 re f\n" + Show(72, 600, "patternkept"),
               "<< /Pattern << /P1 " + Ref(pattern) + " >> /Font << /F1 " + Ref(font) + " >> >>"}});
     },
     Rect{60, 680, 300, 740}, "patternsecret", "patternkept"},
    {"tiling pattern inside a form XObject",
     [](RawPdf& pdf) {
         const int font = pdf.Add(kHelvetica);
         const int pattern = TextTilePattern(pdf, font, "formtilesecret", "/Matrix [1 0 0 1 5 0] ");
         const int form = pdf.AddStream(
             "/Type /XObject /Subtype /Form /BBox [0 0 300 100] /Matrix [1 0 0 1 0 -20] "
             "/Resources << /Pattern << /P1 " +
                 Ref(pattern) + " >> >>",
             "/Pattern cs /P1 scn 10 60 200 40 re f\n");
         return RawDocument(pdf, {{"q 1 0 0 1 62 650 cm /X1 Do Q\n" + Show(72, 600, "formtilekept"),
                                   "<< /XObject << /X1 " + Ref(form) + " >> /Font << /F1 " +
                                       Ref(font) + " >> >>"}});
     },
     Rect{60, 680, 300, 740}, "formtilesecret", "formtilekept"},
    {"Type 3 font",
     [](RawPdf& pdf) {
         const int glyph = pdf.AddStream("", "500 0 0 0 500 700 d1 0 0 500 700 re f");
         const int font = pdf.Add(
             "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 500 700] /FontMatrix [0.001 0 0 "
             "0.001 0 0] /FirstChar 97 /LastChar 122 /Widths [" +
             [] {
                 std::string w;
                 for (int i = 0; i < 26; ++i)
                     w += "500 ";
                 return w;
             }() +
             "] /Encoding << /Type /Encoding /Differences [97 /a /b /c /d /e /f /g /h /i /j /k "
             "/l /m /n /o /p /q /r /s /t /u /v /w /x /y /z] >> /CharProcs << /a " +
             Ref(glyph) + " /b " + Ref(glyph) + " /c " + Ref(glyph) + " /d " + Ref(glyph) + " /e " +
             Ref(glyph) + " /k " + Ref(glyph) + " /p " + Ref(glyph) + " /r " + Ref(glyph) + " /s " +
             Ref(glyph) + " /t " + Ref(glyph) + " >> >>");
         return RawDocument(
             pdf, {{"BT /T3 12 Tf 72 700 Td (typesecret) Tj ET\n" + Show(72, 600, "typekept"),
                    "<< /Font << /T3 " + Ref(font) +
                        " /F1 << /Type /Font "
                        "/Subtype /Type1 /BaseFont /Helvetica >> >> >>"}});
     },
     Rect{60, 690, 200, 715}, "typesecret", "typekept"},
    {"inline image",
     [](RawPdf& pdf) {
         // Grey pixels whose bytes spell the secret.
         return RawDocument(pdf, {{"q 200 0 0 10 72 700 cm BI /W 10 /H 1 /CS /G /BPC 8 ID "
                                   "imgsecret! EI Q\n" +
                                   Show(72, 600, "imgkept")}});
     },
     Rect{60, 690, 300, 720}, "imgsecret", "imgkept"},
    {"undecodable inline image",
     [](RawPdf& pdf) {
         return RawDocument(pdf, {{"q 200 0 0 10 72 700 cm BI /W 10 /H 1 /CS /G /BPC 8 /F /DCT "
                                   "ID badsecret EI Q\n" +
                                   Show(72, 600, "badkept")}});
     },
     Rect{100, 690, 150, 720}, "badsecret", "badkept"},
    {"damaged compressed inline image",
     [](RawPdf& pdf) {
         return RawDocument(pdf, {{"q 200 0 0 10 72 700 cm BI /W 10 /H 1 /CS /G /BPC 8 /F /Fl "
                                   "ID zipsecret EI Q\n" +
                                   Show(72, 600, "zipkept")}});
     },
     Rect{100, 690, 150, 720}, "zipsecret", "zipkept"},
    {"undecodable inline image in a form XObject",
     [](RawPdf& pdf) {
         const int font = pdf.Add(kHelvetica);
         const int form = pdf.AddStream(
             "/Type /XObject /Subtype /Form /BBox [0 0 300 100] /Resources << /Font << /F1 " +
                 Ref(font) + " >> >>",
             "q 200 0 0 10 10 50 cm BI /W 10 /H 1 /CS /G /BPC 8 /F /Fl ID formsecret EI Q\n" +
                 Show(10, 10, "formkept"));
         return RawDocument(pdf, {{"q 1 0 0 1 62 650 cm /X1 Do Q\n",
                                   "<< /XObject << /X1 " + Ref(form) + " >> >>"}});
     },
     Rect{100, 690, 150, 720}, "formsecret", "formkept"},
    {"FreeText annotation",
     [](RawPdf& pdf) {
         const int font = pdf.Add(kHelvetica);
         const int ap = pdf.AddStream(
             "/Type /XObject /Subtype /Form /BBox [0 0 200 30] /Resources << /Font << /F1 " +
                 Ref(font) + " >> >>",
             Show(5, 10, "notesecret"));
         const int note = pdf.Add(
             "<< /Type /Annot /Subtype /FreeText /Rect [72 690 272 720] /Contents (notesecret) "
             "/T (notesecret) /RC (<p>notesecret</p>) /DA (/F1 12 Tf 0 g) /AP << /N " +
             Ref(ap) + " >> >>");
         return RawDocument(
             pdf, {{Show(72, 600, "notekept"), RawPage{}.resources, "[" + Ref(note) + "]"}});
     },
     Rect{60, 680, 300, 730}, "notesecret", "notekept"},
    {"filled text field",
     [](RawPdf& pdf) {
         const int font = pdf.Add(kHelvetica);
         const int ap = pdf.AddStream(
             "/Type /XObject /Subtype /Form /BBox [0 0 200 30] /Resources << /Font << /F1 " +
                 Ref(font) + " >> >>",
             "/Tx BMC " + Show(2, 10, "fieldsecret") + "EMC");
         const int field = pdf.Add(
             "<< /Type /Annot /Subtype /Widget /FT /Tx /T (name) /V (fieldsecret) /DV "
             "(fieldsecret) /Rect [72 690 272 720] /DA (/F1 12 Tf 0 g) /AP << /N " +
             Ref(ap) + " >> >>");
         return RawDocument(
             pdf, {{Show(72, 600, "fieldkept"), RawPage{}.resources, "[" + Ref(field) + "]"}},
             "<< /Fields [" + Ref(field) +
                 "] /DA (/F1 12 Tf 0 g) /DR << /Font "
                 "<< /F1 " +
                 Ref(font) + " >> >> >>");
     },
     Rect{60, 680, 300, 730}, "fieldsecret", "fieldkept"},
    {"link and its action",
     [](RawPdf& pdf) {
         const int action = pdf.Add("<< /S /URI /URI (mailto:linksecret@example.com) >>");
         const int link = pdf.Add("<< /Type /Annot /Subtype /Link /Rect [72 690 272 720] /A " +
                                  Ref(action) + " >>");
         return RawDocument(pdf, {{Show(72, 700, "linksecret") + Show(72, 600, "linkkept"),
                                   RawPage{}.resources, "[" + Ref(link) + "]"}});
     },
     Rect{60, 680, 300, 730}, "linksecret", "linkkept"},
    {"private data and thumbnail",
     [](RawPdf& pdf) {
         // Copies of the page as applications keep them: private data of the page, of a form
         // it draws and of the document, and a thumbnail whose pixels spell the secret.
         const auto piece = [&pdf] {
             return " /PieceInfo << /Editor << /LastModified (D:20200101) /Private " +
                    Ref(pdf.AddStream("", "artwork: piecesecret")) + " >> >>";
         };
         const int form = pdf.AddStream("/Type /XObject /Subtype /Form /BBox [0 0 10 10]" + piece(),
                                        "0 0 1 1 re f");
         const int thumb = pdf.AddStream(
             "/Width 11 /Height 1 /ColorSpace /DeviceGray /BitsPerComponent 8", "piecesecret");
         RawPage page{Show(72, 700, "piecesecret") + Show(72, 600, "piecekept") + "/X1 Do\n"};
         page.resources = "<< /Font << /F1 " + Ref(pdf.Add(kHelvetica)) + " >> /XObject << /X1 " +
                          Ref(form) + " >> >>";
         page.extra = piece() + " /Thumb " + Ref(thumb);
         return RawDocument(pdf, {page}, {}, piece());
     },
     Rect{60, 690, 200, 715}, "piecesecret", "piecekept"},
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.name;
}

class RedactionPlacesTest : public EngineTest, public ::testing::WithParamInterface<Place> {};

TEST_P(RedactionPlacesTest, NothingUnderTheBoxRemainsInTheFile) {
    const Place& place = GetParam();
    RawPdf raw;
    const std::string input = PathOf("in.pdf");
    WriteBytes(input, place.build(raw));
    Document document = Document::Open(context_, input);
    const AnnotationId box = Annotations(document).Create(
        0, MatchAnnotation(document, 0, "Redact", {place.box}, "box"), kDocumentTag, -1);
    Redactor(document).Apply({box}, RedactionOptions{});
    const std::string output = PathOf("out.pdf");
    document.SaveFull(output);

    EXPECT_THAT(InflatedBytes(context_, output), Not(HasSubstr(place.secret)));
    const std::string text = PdfToText(output);
    EXPECT_THAT(text, Not(HasSubstr(place.secret)));
    EXPECT_THAT(text, HasSubstr(place.kept));
    EXPECT_THAT(RunCommand("pdfinfo '" + output + "' 2>&1"), Not(HasSubstr("Error")));
}

INSTANTIATE_TEST_SUITE_P(Places, RedactionPlacesTest, ::testing::ValuesIn(kPlaces),
                         [](const auto& info) {
                             return testing_support::CaseName(info.param.name);
                         });

using RedactionTroubleTest = EngineTest;

// An inline image MuPDF cannot read (absurd size) in the page content: without it the page is
// redacted; the text beside it stays.
const std::string kUnreadableImage =
    "q 200 0 0 10 72 650 cm BI /W 100000 /H 100000 /CS /G /BPC 8 /F /Fl ID broken EI Q\n";

// Three pages with a secret each under the same box; the middle one holds `middle` too.
std::vector<AnnotationId> ThreePagesBoxed(Document& document) {
    std::vector<AnnotationId> boxes;
    for (int page = 0; page < 3; ++page) {
        boxes.push_back(Annotations(document).Create(
            page, MatchAnnotation(document, page, "Redact", {Rect{60, 690, 200, 715}}, "box"),
            kDocumentTag, -1));
    }
    return boxes;
}

std::string ThreePages(RawPdf& raw, const std::string& middle, const std::string& resources) {
    return RawDocument(
        raw, {{Show(72, 700, "firstsecret") + Show(72, 600, "firstkept")},
              {Show(72, 700, "middlesecret") + middle + Show(72, 600, "middlekept"), resources},
              {Show(72, 700, "lastsecret") + Show(72, 600, "lastkept")}});
}

TEST_F(RedactionTroubleTest, AnUnreadableInlineImageNoLongerStopsItsPage) {
    RawPdf raw;
    const std::string input = PathOf("in.pdf");
    // A readable image after the broken one stays.
    WriteBytes(input,
               ThreePages(raw,
                          kUnreadableImage + "q 20 0 0 20 300 300 cm BI /W 2 /H 1 /CS /G /BPC 8 "
                                             "ID \x01\x02 EI Q\n",
                          RawPage{}.resources));
    Document document = Document::Open(context_, input);
    const RedactionReport report =
        Redactor(document).Apply(ThreePagesBoxed(document), RedactionOptions{});
    EXPECT_EQ(report.applied, 3);
    EXPECT_TRUE(report.problems.empty());
    const std::string output = PathOf("out.pdf");
    document.SaveFull(output);

    const std::string bytes = InflatedBytes(context_, output);
    const std::string text = PdfToText(output);
    for (const char* secret : {"firstsecret", "middlesecret", "lastsecret", "broken"}) {
        EXPECT_THAT(bytes, Not(HasSubstr(secret)));
        EXPECT_THAT(text, Not(HasSubstr(secret)));
    }
    for (const char* kept : {"firstkept", "middlekept", "lastkept"})
        EXPECT_THAT(text, HasSubstr(kept));
    EXPECT_THAT(RunCommand("pdfimages -list '" + output + "' 2>&1"), HasSubstr("  2     1  gray"));
    EXPECT_THAT(RunCommand("pdfinfo '" + output + "' 2>&1"), Not(HasSubstr("Error")));
}

// A page whose content MuPDF cannot read through (the broken image inside a form XObject)
// stays as it was, its Redact annotation standing, and is reported; the pages around it are
// redacted.
TEST_F(RedactionTroubleTest, OnePagesTroubleStaysOnThatPage) {
    RawPdf raw;
    const int form =
        raw.AddStream("/Type /XObject /Subtype /Form /BBox [0 0 612 792]", kUnreadableImage);
    const std::string input = PathOf("in.pdf");
    WriteBytes(input, ThreePages(raw, "/X1 Do\n",
                                 "<< /XObject << /X1 " + Ref(form) +
                                     " >> /Font << /F1 << /Type /Font /Subtype /Type1 "
                                     "/BaseFont /Helvetica >> >> >>"));
    Document document = Document::Open(context_, input);
    const std::vector<AnnotationId> boxes = ThreePagesBoxed(document);
    const RedactionReport report = Redactor(document).Apply(boxes, RedactionOptions{});
    EXPECT_EQ(report.applied, 2);
    ASSERT_EQ(report.problems.size(), 1u);
    EXPECT_EQ(report.problems[0].page, 1);
    EXPECT_EQ(report.problems[0].boxes, (std::vector<Rect>{Rect{60, 690, 200, 715}}));
    EXPECT_THAT(report.problems[0].reason, HasSubstr("image"));
    EXPECT_EQ(Redactor(document).RedactAnnotations(), (std::vector<AnnotationId>{boxes[1]}));
    const std::string output = PathOf("out.pdf");
    document.SaveFull(output);

    const std::string bytes = InflatedBytes(context_, output);
    const std::string text = PdfToText(output);
    for (const char* secret : {"firstsecret", "lastsecret"}) {
        EXPECT_THAT(bytes, Not(HasSubstr(secret)));
        EXPECT_THAT(text, Not(HasSubstr(secret)));
    }
    EXPECT_THAT(text, HasSubstr("firstkept"));
    EXPECT_THAT(text, HasSubstr("lastkept"));
    EXPECT_THAT(RunCommand("pdfinfo '" + output + "' 2>&1"), HasSubstr("Pages:           3"));
}

// Text markups under a box stay (records of them point at them) but lose their text and get an
// appearance built from their own geometry; other annotations under the box go.
TEST_F(RedactionTroubleTest, TextMarkupsStayWithoutTheirText) {
    RawPdf raw;
    const int font = raw.Add(kHelvetica);
    // An appearance that shows text: it must not survive.
    const int ap = raw.AddStream(
        "/Type /XObject /Subtype /Form /BBox [0 0 200 30] /Resources << /Font << /F1 " + Ref(font) +
            " >> >>",
        Show(5, 10, "apsecret"));
    const int popup = raw.Add(
        "<< /Type /Annot /Subtype /Popup /Rect [300 690 400 720] /Contents (popupsecret) >>");
    std::string annots = "[";
    std::vector<int> markups;
    for (const char* subtype : {"Highlight", "Underline", "StrikeOut", "Squiggly"}) {
        markups.push_back(raw.Add(std::string("<< /Type /Annot /Subtype /") + subtype +
                                  " /Rect [72 690 272 720] /QuadPoints [72 720 272 720 72 690 "
                                  "272 690] /C [1 1 0] /Contents (marksecret) /T (marksecret) "
                                  "/Subj (marksecret) /RC (<p>marksecret</p>) /Popup " +
                                  Ref(popup) + " /AP << /N " + Ref(ap) + " >> >>"));
        annots += Ref(markups.back()) + " ";
    }
    const int square = raw.Add(
        "<< /Type /Annot /Subtype /Square /Rect [72 690 272 720] /Contents (squaresecret) >>");
    annots += Ref(popup) + " " + Ref(square) + "]";
    const std::string input = PathOf("in.pdf");
    WriteBytes(input, RawDocument(raw, {{Show(72, 600, "kept"), RawPage{}.resources, annots}}));
    Document document = Document::Open(context_, input);
    Redactor(document).Apply(
        {Annotations(document).Create(
            0, MatchAnnotation(document, 0, "Redact", {Rect{60, 680, 300, 730}}, "box"),
            kDocumentTag, -1)},
        RedactionOptions{});
    const std::string output = PathOf("out.pdf");
    document.SaveFull(output);

    const std::string bytes = InflatedBytes(context_, output);
    for (const char* secret : {"apsecret", "popupsecret", "marksecret", "squaresecret"})
        EXPECT_THAT(bytes, Not(HasSubstr(secret)));
    Document reopened = Document::Open(context_, output);
    Annotations kept(reopened);
    std::vector<std::string> subtypes;
    for (const int object : kept.OnPage(0))
        subtypes.push_back(kept.Subtype(object));
    EXPECT_EQ(subtypes, (std::vector<std::string>{"Highlight", "Underline", "StrikeOut", "Squiggly",
                                                  "Popup"}));
    fz_context* ctx = reopened.fz();
    for (const int object : kept.OnPage(0)) {
        if (kept.Subtype(object) == "Popup")
            continue;
        EXPECT_EQ(kept.RectOf(object), (Rect{72, 690, 272, 720})) << kept.Subtype(object);
        const ObjPtr dict = kept.Dictionary(object);
        const bool drawn = CallMupdf(ctx, "appearance", [&] {
            return pdf_is_stream(ctx, pdf_dict_getp(ctx, dict.get(), "AP/N")) != 0;
        });
        EXPECT_TRUE(drawn) << kept.Subtype(object);
    }
    EXPECT_THAT(RunCommand("pdfinfo '" + output + "' 2>&1"), Not(HasSubstr("Error")));
}

// A file whose earlier revision held text that a later incremental update took away: after an
// apply, every way of writing the document leaves no revision behind.
TEST_F(RedactionTroubleTest, NoEarlierRevisionSurvivesAnySave) {
    RawPdf raw;
    const std::string input = PathOf("in.pdf");
    WriteBytes(input, RawDocument(raw, {{Show(72, 700, "historysecret") + Show(72, 600, "box")}}));
    {
        Document first = Document::Open(context_, input);
        fz_context* ctx = first.fz();
        const ObjPtr page_obj = first.PageObject(0, "incremental update");
        CallMupdf(ctx, "incremental update", [&] {
            pdf_obj* page = page_obj.get();
            fz_buffer* content = fz_new_buffer_from_shared_data(
                ctx, reinterpret_cast<const unsigned char*>("BT /F1 12 Tf 72 600 Td (box) Tj ET"),
                34);
            pdf_update_stream(ctx, first.pdf(), pdf_dict_get(ctx, page, PDF_NAME(Contents)),
                              content, 0);
            fz_drop_buffer(ctx, content);
            pdf_write_options options = pdf_default_write_options;
            options.do_incremental = 1;
            pdf_save_document(ctx, first.pdf(), input.c_str(), &options);
        });
    }
    ASSERT_THAT(testing_support::ReadBytes(input), HasSubstr("historysecret"));

    Document document = Document::Open(context_, input);
    Redactor(document).Apply(
        {Annotations(document).Create(
            0, MatchAnnotation(document, 0, "Redact", {Rect{60, 590, 120, 615}}, "box"),
            kDocumentTag, -1)},
        RedactionOptions{});
    document.WriteCopy(PathOf("copy.pdf"));
    document.SaveFull(PathOf("saved.pdf"));
    document.SaveFull(PathOf("saved.pdf"));  // a second save of the same document
    for (const char* name : {"copy.pdf", "saved.pdf"}) {
        const std::string bytes = testing_support::ReadBytes(PathOf(name));
        EXPECT_THAT(bytes, Not(HasSubstr("historysecret"))) << name;
        EXPECT_EQ(bytes.find("%%EOF"), bytes.rfind("%%EOF")) << name << ": one revision only";
        EXPECT_THAT(InflatedBytes(context_, PathOf(name)), Not(HasSubstr("historysecret")));
    }
}

}  // namespace
}  // namespace pdfhost::engine
