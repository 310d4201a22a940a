// What lies under a Redact box is gone from every place the file can hold it: the saved file is
// searched (streams inflated) for the removed text, read by poppler, and opened again by MuPDF.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "engine/annotation_text_finder.h"
#include "engine/redaction.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// A text-showing operation in Helvetica at (x, y), 12 pt.
std::string Show(float x, float y, const std::string& text, const std::string& extra = {}) {
    return "BT /F1 12 Tf " + extra + " " + std::to_string(x) + " " + std::to_string(y) + " Td (" +
           text + ") Tj ET\n";
}

const std::string kFont = "/Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >>";

// A form XObject with `entries` (its /BBox at least) drawing `content` with `resources`.
int Form(RawPdf& pdf, const std::string& entries, const std::string& content,
         const std::string& resources = kFont) {
    return pdf.AddStream(
        "/Type /XObject /Subtype /Form " + entries + " /Resources << " + resources + " >>",
        content);
}

// A page that draws the form XObject `form` at (62, 650), then `content`, with `resources`.
RawPage DrawingForm(int form, const std::string& content = {}, const std::string& resources = {}) {
    return {"q 1 0 0 1 62 650 cm /X1 Do Q\n" + content,
            "<< /XObject << /X1 " + Ref(form) + " >> " + resources + " >>"};
}

// A coloured tiling pattern of 200 x 40 whose tile shows `text`; `matrix` is extra dictionary
// text such as "/Matrix [...] ".
int TextTilePattern(RawPdf& pdf, const std::string& text, const std::string& matrix = {}) {
    return pdf.AddStream(
        "/Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [0 0 200 40] "
        "/XStep 200 /YStep 40 " +
            matrix + "/Resources << " + kFont + " >>",
        Show(5, 15, text));
}

// A Type 3 font drawing every letter as a 500 x 700 box.
int BoxFont(RawPdf& pdf) {
    const std::string glyph = Ref(pdf.AddStream("", "500 0 0 0 500 700 d1 0 0 500 700 re f"));
    std::string widths, names, procs;
    for (char c = 'a'; c <= 'z'; ++c) {
        widths += "500 ";
        names += std::string(" /") + c;
        procs += std::string(" /") + c + " " + glyph;
    }
    return pdf.Add(
        "<< /Type /Font /Subtype /Type3 /FontBBox [0 0 500 700] /FontMatrix [0.001 0 0 0.001 0 0] "
        "/FirstChar 97 /LastChar 122 /Widths [" +
        widths + "] /Encoding << /Type /Encoding /Differences [97" + names + "] >> /CharProcs <<" +
        procs + " >> >>");
}

// An inline image of 10 grey pixels stretched over 200 x 10 at (x, y), its bytes `data`;
// `filter` is extra image entries.
std::string InlineImage(float x, float y, const std::string& data, const std::string& filter) {
    return "q 200 0 0 10 " + std::to_string(x) + " " + std::to_string(y) +
           " cm BI /W 10 /H 1 /CS /G /BPC 8 " + filter + " ID " + data + " EI Q\n";
}

// A page with its content and one annotation.
RawPage Annotated(const std::string& content, int annotation) {
    return {content, RawPage{}.resources, "[" + Ref(annotation) + "]"};
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
         return RawDocument(
             pdf, {DrawingForm(Form(pdf, "/BBox [0 0 300 100]",
                                    Show(10, 50, "xobjsecret") + Show(200, 50, "xobjkept")))});
     },
     Rect{60, 690, 160, 715}, "xobjsecret", "xobjkept"},
    {"tiling pattern",
     [](RawPdf& pdf) {
         return RawDocument(
             pdf, {{"/Pattern cs /P1 scn 72 690 200 40 re f\n" + Show(72, 600, "patternkept"),
                    "<< /Pattern << /P1 " + Ref(TextTilePattern(pdf, "patternsecret")) + " >> " +
                        kFont + " >>"}});
     },
     Rect{60, 680, 300, 740}, "patternsecret", "patternkept"},
    {"tiling pattern inside a form XObject",
     [](RawPdf& pdf) {
         const int pattern = TextTilePattern(pdf, "formtilesecret", "/Matrix [1 0 0 1 5 0] ");
         const int form = Form(pdf, "/BBox [0 0 300 100] /Matrix [1 0 0 1 0 -20]",
                               "/Pattern cs /P1 scn 10 60 200 40 re f\n",
                               "/Pattern << /P1 " + Ref(pattern) + " >>");
         return RawDocument(pdf, {DrawingForm(form, Show(72, 600, "formtilekept"), kFont)});
     },
     Rect{60, 680, 300, 740}, "formtilesecret", "formtilekept"},
    {"Type 3 font",
     [](RawPdf& pdf) {
         return RawDocument(
             pdf, {{"BT /T3 12 Tf 72 700 Td (typesecret) Tj ET\n" + Show(72, 600, "typekept"),
                    "<< /Font << /T3 " + Ref(BoxFont(pdf)) +
                        " /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >>"}});
     },
     Rect{60, 690, 200, 715}, "typesecret", "typekept"},
    {"inline image",  // grey pixels whose bytes spell the secret
     [](RawPdf& pdf) {
         return RawDocument(pdf,
                            {{InlineImage(72, 700, "imgsecret!", "") + Show(72, 600, "imgkept")}});
     },
     Rect{60, 690, 300, 720}, "imgsecret", "imgkept"},
    {"undecodable inline image",
     [](RawPdf& pdf) {
         return RawDocument(
             pdf, {{InlineImage(72, 700, "badsecret", "/F /DCT") + Show(72, 600, "badkept")}});
     },
     Rect{100, 690, 150, 720}, "badsecret", "badkept"},
    {"damaged compressed inline image",
     [](RawPdf& pdf) {
         return RawDocument(
             pdf, {{InlineImage(72, 700, "zipsecret", "/F /Fl") + Show(72, 600, "zipkept")}});
     },
     Rect{100, 690, 150, 720}, "zipsecret", "zipkept"},
    {"undecodable inline image in a form XObject",
     [](RawPdf& pdf) {
         return RawDocument(pdf, {DrawingForm(Form(pdf, "/BBox [0 0 300 100]",
                                                   InlineImage(10, 50, "formsecret", "/F /Fl") +
                                                       Show(10, 10, "formkept")))});
     },
     Rect{100, 690, 150, 720}, "formsecret", "formkept"},
    {"FreeText annotation",
     [](RawPdf& pdf) {
         const int ap = Form(pdf, "/BBox [0 0 200 30]", Show(5, 10, "notesecret"));
         const int note = pdf.Add(
             "<< /Type /Annot /Subtype /FreeText /Rect [72 690 272 720] /Contents (notesecret) "
             "/T (notesecret) /RC (<p>notesecret</p>) /DA (/F1 12 Tf 0 g) /AP << /N " +
             Ref(ap) + " >> >>");
         return RawDocument(pdf, {Annotated(Show(72, 600, "notekept"), note)});
     },
     Rect{60, 680, 300, 730}, "notesecret", "notekept"},
    {"filled text field",
     [](RawPdf& pdf) {
         const int ap =
             Form(pdf, "/BBox [0 0 200 30]", "/Tx BMC " + Show(2, 10, "fieldsecret") + "EMC");
         const int field = pdf.Add(
             "<< /Type /Annot /Subtype /Widget /FT /Tx /T (name) /V (fieldsecret) /DV "
             "(fieldsecret) /Rect [72 690 272 720] /DA (/F1 12 Tf 0 g) /AP << /N " +
             Ref(ap) + " >> >>");
         return RawDocument(
             pdf, {Annotated(Show(72, 600, "fieldkept"), field)},
             "<< /Fields [" + Ref(field) + "] /DA (/F1 12 Tf 0 g) /DR << " + kFont + " >> >>");
     },
     Rect{60, 680, 300, 730}, "fieldsecret", "fieldkept"},
    {"link and its action",
     [](RawPdf& pdf) {
         const int action = pdf.Add("<< /S /URI /URI (mailto:linksecret@example.com) >>");
         const int link = pdf.Add("<< /Type /Annot /Subtype /Link /Rect [72 690 272 720] /A " +
                                  Ref(action) + " >>");
         return RawDocument(
             pdf, {Annotated(Show(72, 700, "linksecret") + Show(72, 600, "linkkept"), link)});
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
         RawPage page{Show(72, 700, "piecesecret") + Show(72, 600, "piecekept") + "/X1 Do\n",
                      "<< " + kFont + " /XObject << /X1 " + Ref(form) + " >> >>"};
         page.extra = piece() + " /Thumb " + Ref(thumb);
         return RawDocument(pdf, {page}, {}, piece());
     },
     Rect{60, 690, 200, 715}, "piecesecret", "piecekept"},
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.name;
}

// The saved file's inflated bytes and pdftotext's text hold none of `secrets` and the text all
// of `kept`; poppler reads it without an error.
void ExpectGoneAndKept(Context& context, const std::string& path,
                       const std::vector<std::string>& secrets,
                       const std::vector<std::string>& kept) {
    const std::string bytes = InflatedBytes(context, path);
    const std::string text = PdfToText(path);
    for (const std::string& secret : secrets) {
        EXPECT_THAT(bytes, Not(HasSubstr(secret)));
        EXPECT_THAT(text, Not(HasSubstr(secret)));
    }
    for (const std::string& stays : kept)
        EXPECT_THAT(text, HasSubstr(stays));
    EXPECT_THAT(PdfInfo(path), Not(HasSubstr("Error")));
}

class RedactionPlacesTest : public EngineTest, public ::testing::WithParamInterface<Place> {};

TEST_P(RedactionPlacesTest, NothingUnderTheBoxRemainsInTheFile) {
    const Place& place = GetParam();
    RawPdf raw;
    Document document = OpenBytes(place.build(raw));
    const std::string output =
        ApplyAndSave(document, {AddRedact(document, 0, {place.box})}, PathOf("out.pdf"));
    ExpectGoneAndKept(context_, output, {place.secret}, {place.kept});
}

INSTANTIATE_TEST_SUITE_P(Places, RedactionPlacesTest, ::testing::ValuesIn(kPlaces),
                         [](const auto& info) { return CaseName(info.param.name); });

// An inline image MuPDF cannot read (absurd size) in the page content.
const std::string kUnreadableImage =
    "q 200 0 0 10 72 650 cm BI /W 100000 /H 100000 /CS /G /BPC 8 /F /Fl ID broken EI Q\n";

class RedactionTroubleTest : public EngineTest {
  protected:
    // Opens three pages with a secret each; the middle one draws `middle` with `resources` too.
    Document ThreePages(RawPdf& raw, const std::string& middle, const std::string& resources) {
        return OpenBytes(RawDocument(
            raw, {{Show(72, 700, "firstsecret") + Show(72, 600, "firstkept")},
                  {Show(72, 700, "middlesecret") + middle + Show(72, 600, "middlekept"), resources},
                  {Show(72, 700, "lastsecret") + Show(72, 600, "lastkept")}}));
    }
    // The same box over the secret of each of the three pages.
    static std::vector<AnnotationId> BoxEachPage(Document& document) {
        std::vector<AnnotationId> boxes;
        for (int page = 0; page < 3; ++page)
            boxes.push_back(AddRedact(document, page, {Rect{60, 690, 200, 715}}));
        return boxes;
    }
};

// Without the unreadable image the page is redacted; the text and a readable image beside it
// stay.
TEST_F(RedactionTroubleTest, AnUnreadableInlineImageNoLongerStopsItsPage) {
    RawPdf raw;
    Document document = ThreePages(
        raw,
        kUnreadableImage + "q 20 0 0 20 300 300 cm BI /W 2 /H 1 /CS /G /BPC 8 ID \x01\x02 EI Q\n",
        RawPage{}.resources);
    const RedactionReport report = Redactor(document).Apply(BoxEachPage(document), {});
    EXPECT_EQ(report.applied, 3);
    EXPECT_TRUE(report.problems.empty());
    const std::string output = Saved(document, "out.pdf");

    ExpectGoneAndKept(context_, output, {"firstsecret", "middlesecret", "lastsecret", "broken"},
                      {"firstkept", "middlekept", "lastkept"});
    EXPECT_THAT(RunCommand("pdfimages -list '" + output + "' 2>&1"), HasSubstr("  2     1  gray"));
}

// A page whose content MuPDF cannot read through (the broken image inside a form XObject)
// stays as it was, its Redact annotation standing, and is reported; the pages around it are
// redacted.
TEST_F(RedactionTroubleTest, OnePagesTroubleStaysOnThatPage) {
    RawPdf raw;
    const int form = Form(raw, "/BBox [0 0 612 792]", kUnreadableImage, "");
    Document document =
        ThreePages(raw, "/X1 Do\n", "<< /XObject << /X1 " + Ref(form) + " >> " + kFont + " >>");
    const std::vector<AnnotationId> boxes = BoxEachPage(document);
    const RedactionReport report = Redactor(document).Apply(boxes, {});
    EXPECT_EQ(report.applied, 2);
    ASSERT_EQ(report.problems.size(), 1u);
    EXPECT_EQ(report.problems[0].page, 1);
    EXPECT_EQ(report.problems[0].boxes, (std::vector<Rect>{Rect{60, 690, 200, 715}}));
    EXPECT_THAT(report.problems[0].reason, HasSubstr("image"));
    EXPECT_EQ(Redactor(document).RedactAnnotations(), (std::vector<AnnotationId>{boxes[1]}));
    const std::string output = Saved(document, "out.pdf");

    ExpectGoneAndKept(context_, output, {"firstsecret", "lastsecret"}, {"firstkept", "lastkept"});
    EXPECT_THAT(PdfInfo(output), HasSubstr("Pages:           3"));
}

// Text markups under a box stay (records of them point at them) but lose their text and get an
// appearance built from their own geometry; other annotations under the box go.
TEST_F(RedactionTroubleTest, TextMarkupsStayWithoutTheirText) {
    RawPdf raw;
    // An appearance that shows text: it must not survive.
    const int ap = Form(raw, "/BBox [0 0 200 30]", Show(5, 10, "apsecret"));
    const int popup = raw.Add(
        "<< /Type /Annot /Subtype /Popup /Rect [300 690 400 720] /Contents (popupsecret) >>");
    std::string annots = "[";
    for (const char* subtype : {"Highlight", "Underline", "StrikeOut", "Squiggly"}) {
        annots +=
            Ref(raw.Add(std::string("<< /Type /Annot /Subtype /") + subtype +
                        " /Rect [72 690 272 720] /QuadPoints [72 720 272 720 72 690 272 690] "
                        "/C [1 1 0] /Contents (marksecret) /T (marksecret) /Subj (marksecret) "
                        "/RC (<p>marksecret</p>) /Popup " +
                        Ref(popup) + " /AP << /N " + Ref(ap) + " >> >>")) +
            " ";
    }
    const int square = raw.Add(
        "<< /Type /Annot /Subtype /Square /Rect [72 690 272 720] /Contents (squaresecret) >>");
    annots += Ref(popup) + " " + Ref(square) + "]";
    Document document =
        OpenBytes(RawDocument(raw, {{Show(72, 600, "kept"), RawPage{}.resources, annots}}));
    const std::string output = ApplyAndSave(
        document, {AddRedact(document, 0, {Rect{60, 680, 300, 730}})}, PathOf("out.pdf"));

    ExpectGoneAndKept(context_, output, {"apsecret", "popupsecret", "marksecret", "squaresecret"},
                      {"kept"});
    Document reopened = Document::Open(context_, output);
    Annotations kept(reopened);
    std::vector<std::string> subtypes;
    fz_context* ctx = reopened.fz();
    for (const int object : kept.OnPage(0)) {
        subtypes.push_back(kept.Subtype(object));
        if (subtypes.back() == "Popup")
            continue;
        EXPECT_EQ(kept.RectOf(object), (Rect{72, 690, 272, 720})) << subtypes.back();
        const ObjPtr dict = kept.Dictionary(object);
        EXPECT_TRUE(CallMupdf(ctx, "appearance", [&] {
            return pdf_is_stream(ctx, pdf_dict_getp(ctx, dict.get(), "AP/N")) != 0;
        })) << subtypes.back();
    }
    EXPECT_EQ(subtypes, (std::vector<std::string>{"Highlight", "Underline", "StrikeOut", "Squiggly",
                                                  "Popup"}));
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
        const ObjPtr page = first.PageObject(0, "incremental update");
        CallMupdf(ctx, "incremental update", [&] {
            fz_buffer* content = fz_new_buffer_from_shared_data(
                ctx, reinterpret_cast<const unsigned char*>("BT /F1 12 Tf 72 600 Td (box) Tj ET"),
                34);
            pdf_update_stream(ctx, first.pdf(), pdf_dict_get(ctx, page.get(), PDF_NAME(Contents)),
                              content, 0);
            fz_drop_buffer(ctx, content);
            pdf_write_options options = pdf_default_write_options;
            options.do_incremental = 1;
            pdf_save_document(ctx, first.pdf(), input.c_str(), &options);
        });
    }
    ASSERT_THAT(ReadBytes(input), HasSubstr("historysecret"));

    Document document = Document::Open(context_, input);
    Redactor(document).Apply({AddRedact(document, 0, {Rect{60, 590, 120, 615}})}, {});
    document.WriteCopy(PathOf("copy.pdf"));
    document.SaveFull(PathOf("saved.pdf"));  // a second save of the same document
    for (const char* name : {"copy.pdf", "saved.pdf"}) {
        const std::string bytes = ReadBytes(PathOf(name));
        EXPECT_THAT(bytes, Not(HasSubstr("historysecret"))) << name;
        EXPECT_EQ(bytes.find("%%EOF"), bytes.rfind("%%EOF")) << name << ": one revision only";
        EXPECT_THAT(InflatedBytes(context_, PathOf(name)), Not(HasSubstr("historysecret")));
    }
}

// Text in a layer the file hides is still in the file: it is read and redacted like any other,
// and the layer stays hidden for the viewer.
TEST_F(RedactionTroubleTest, TextOfAHiddenLayerIsReadAndRedactedWhileTheLayerStaysHidden) {
    RawPdf raw;
    const int layer = raw.Add("<< /Type /OCG /Name (Draft notes) >>");
    Document document = OpenBytes(RawDocument(
        raw,
        {{Show(72, 700, "Shown line") + "/OC /L1 BDC " + Show(72, 400, "layersecret") + "EMC\n",
          "<< " + kFont + " /Properties << /L1 " + Ref(layer) + " >> >>"}},
        {}, " /OCProperties << /OCGs [" + Ref(layer) + "] /D << /OFF [" + Ref(layer) + "] >> >>"));

    const PageText text = PageText::OfPage(document, 0);
    const std::size_t at = text.Slice(0, text.CharCount()).find(U"layersecret");
    ASSERT_NE(at, std::u32string::npos) << "the hidden layer's text is read";
    EXPECT_EQ(pdf_layer_is_enabled(document.fz(), document.pdf(), 0), 0)
        << "the layer is hidden again afterwards";

    const Rect box = text.Chars()[at].box;
    const std::string output = ApplyAndSave(
        document, {AddRedact(document, 0, {Rect{box.left - 2, box.bottom - 2, 300, box.top + 2}})},
        PathOf("out.pdf"));
    EXPECT_THAT(InflatedBytes(context_, output), Not(HasSubstr("layersecret")));
    EXPECT_THAT(InflatedBytes(context_, output), HasSubstr("Shown line"));
}

// Text drawn by annotations (free text, stamps) is found, and marking what was found takes it
// out of the saved file.
class AnnotationTextFinderTest : public EngineTest {
  protected:
    Document Open() {
        RawPdf pdf;
        std::string annots = "[";
        for (const auto& [subtype, rect, text] :
             {std::tuple{"FreeText", "[72 690 272 720]", "Call Ana Lind"},
              std::tuple{"Stamp", "[72 590 272 620]", "Approved: ANA LIND"},
              std::tuple{"Redact", "[72 490 272 520]", "Ana Lind"}}) {
            const int ap = Form(pdf, "/BBox [0 0 200 30]",
                                "BT /F1 10 Tf 5 10 Td (" + std::string(text) + ") Tj ET");
            annots += Ref(pdf.Add(std::string("<< /Type /Annot /Subtype /") + subtype + " /Rect " +
                                  rect + " /AP << /N " + Ref(ap) + " >> >>")) +
                      " ";
        }
        return OpenBytes(
            RawDocument(pdf, {{Show(72, 400, "Kept text"), RawPage{}.resources, annots + "]"}}));
    }
    static std::vector<AnnotationMatch> Found(Document& document, int page,
                                              const char32_t* needle) {
        return FindInAnnotationAppearances(document, page, *TextPattern::Compile(needle, {}));
    }
};

TEST_F(AnnotationTextFinderTest, FreeTextAndStampsAreFoundWhereDrawnAndMarkingTakesThemOut) {
    Document document = Open();
    const std::vector<AnnotationMatch> found = Found(document, 0, U"ana lind");
    ASSERT_EQ(found.size(), 2u);  // the redaction mark's own text is not searched
    const float tops[] = {720, 620};
    for (std::size_t i = 0; i < found.size(); ++i) {
        ASSERT_EQ(found[i].rects.size(), 1u);
        const Rect& box = found[i].rects[0];
        EXPECT_GT(box.left, 95);  // after "Call " / "Approved: "
        EXPECT_LT(box.right, 272);
        EXPECT_GT(box.bottom, tops[i] - 30);
        EXPECT_LT(box.top, tops[i]);
    }
    EXPECT_TRUE(Found(document, 0, U"Kept").empty());
    EXPECT_TRUE(Found(document, 7, U"Ana").empty());

    std::vector<AnnotationId> boxes;
    for (const AnnotationMatch& match : found)
        boxes.push_back(AddRedact(document, 0, match.rects));
    const std::string output = ApplyAndSave(document, boxes, PathOf("out.pdf"));

    ExpectGoneAndKept(context_, output, {"Call Ana Lind", "ANA LIND"}, {"Kept text"});
    Document reopened = Document::Open(context_, output);
    EXPECT_TRUE(Found(reopened, 0, U"ana lind").empty());
}

}  // namespace
}  // namespace pdfhost::engine
