// Search, annotation, redaction and form commands against real PDF files in pdfhost, checked on
// what a reader of the saved file sees: pdftotext's text, the annotation entries, Info entries,
// image pixels, and the leak checker for copies of the redacted words anywhere in the file.
#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <gmock/gmock.h>

#include "annotation_editor.h"
#include "engine/document.h"
#include "leak_check.h"
#include "plugin_host_fixture.h"

namespace {

using pdfhost::engine::Document;
using pdfhost::engine::PageDescription;
using ::testing::HasSubstr;
using ::testing::Not;

class RedactionInHostTest : public PluginHostTest {
  protected:
    void SetUp() override { Start(); }
};

// The words go from the page and from the rest of the file too: the words searched for and the
// characters under the boxes, wherever the file holds them as text; the other Info entries stay.
TEST_F(RedactionInHostTest, RedactedWordsAreGoneFromTheWholeFileAndTheRestStays) {
    const std::string path = OpenPdf(
        "people.pdf", {.pages = {PageDescription::TextLines(
                           {"Jane Roe lives at 12 Elm Street", "Contact jane.roe@example.com",
                            "Keep this sentence intact", "Jane Roe signed on Monday"})},
                       .info = {{"Title", "File of JANE ROE"},
                                {"Author", "jane.roe@example.com"},
                                {"Keywords", "Jane\nRoe, insurance"},
                                {"Subject", "Quarterly insurance review"}}});
    ASSERT_NE(leak_check::Leaks(path, {"Jane Roe", "jane.roe@example.com"}), "");
    const Json::Value names = Find("Jane Roe");
    ASSERT_EQ(names["ret"].asInt(), 0) << names;
    ASSERT_EQ(names["data"]["count"].asInt(), 2);
    const Json::Value mail = Find("jane.roe@example.com");
    ASSERT_EQ(mail["data"]["count"].asInt(), 1);

    EXPECT_EQ(AddAnnot(names["data"]["searchKey"], 0, "redact", "ai_plugin_a")["ret"].asInt(), 0);
    EXPECT_EQ(AddAnnot(names["data"]["searchKey"], 1, "redact", "ai_plugin_b")["ret"].asInt(), 0);
    EXPECT_EQ(AddAnnot(mail["data"]["searchKey"], 0, "redact", "ai_plugin_c")["ret"].asInt(), 0);
    EXPECT_EQ(Call("isCurrentDocModified")["data"], Json::Value(true));

    const Json::Value applied = Apply({"ai_plugin_a", "ai_plugin_b", "ai_plugin_c", "nope"});
    EXPECT_EQ(applied["ret"].asInt(), 0) << applied;
    ASSERT_EQ(applied["data"].size(), 1u);
    EXPECT_EQ(applied["data"][0].asString(), "nope");
    Save();

    EXPECT_EQ(leak_check::Leaks(path, {"Jane Roe", "jane.roe@example.com"}), "");
    const std::string text = PdfToText(path);
    for (const char* kept :
         {"Keep this sentence intact", "lives at 12 Elm Street", "signed on Monday"})
        EXPECT_THAT(text, HasSubstr(kept));
    Document saved = Document::Open(host->Engine(), path);
    EXPECT_EQ(saved.InfoString("Title"), "File of ");
    EXPECT_EQ(saved.InfoString("Keywords"), ", insurance");
    EXPECT_EQ(saved.InfoString("Subject"), "Quarterly insurance review");
    EXPECT_EQ(saved.InfoString("Author"), "");
}

// The user presses Ctrl+Z after the scan: the last mark goes. The apply names it as not
// applied, which is what the page tells the user; marked again, it is applied too.
TEST_F(RedactionInHostTest, MarkUndoneBeforeTheApplyIsNamedAndCanBeMarkedAgain) {
    const std::string path =
        OpenLines("undo.pdf", {"Client: Jane Roe", "SSN 536-22-4107", "Keep this"});
    Mark("Jane Roe", "ai_plugin_name");
    Mark("536-22-4107", "ai_plugin_ssn");
    pdfhost::HostDocument* document = host->Documents().Active();
    ASSERT_NE(document, nullptr);
    ASSERT_TRUE(pdfhost::AnnotationEditor(*host).UndoLast(*document));

    const Json::Value failed = Apply({"ai_plugin_name", "ai_plugin_ssn"});
    EXPECT_EQ(failed["ret"].asInt(), 0) << failed;
    ASSERT_EQ(failed["data"].size(), 1u);
    EXPECT_EQ(failed["data"][0].asString(), "ai_plugin_ssn");

    Mark("536-22-4107", "ai_plugin_ssn_again");
    const Json::Value applied = Apply({"ai_plugin_ssn_again"});
    EXPECT_EQ(applied["ret"].asInt(), 0) << applied;
    EXPECT_EQ(applied["data"].size(), 0u) << applied;
    Save();
    EXPECT_EQ(leak_check::Leaks(path, {"Jane Roe", "536-22-4107"}), "");
}

// The plug-in's highlight of a match that is redacted stays, so its record still finds it; what
// it held as text goes with the match.
TEST_F(RedactionInHostTest, AHighlightUnderTheBoxStaysForItsRecordWithoutItsText) {
    const std::string path = OpenLines("both.pdf", {"Alpha Beta Gamma"});
    const Json::Value key = Find("Beta")["data"]["searchKey"];
    ASSERT_EQ(AddAnnot(key, 0, "highlight", "ai_plugin_h", "Beta noted")["ret"].asInt(), 0);
    ASSERT_EQ(
        AddAnnot(Find("Beta")["data"]["searchKey"], 0, "redact", "ai_plugin_r")["ret"].asInt(), 0);
    ASSERT_EQ(Apply({"ai_plugin_r"})["ret"].asInt(), 0);
    Save();
    {
        Document saved = Document::Open(host->Engine(), path);
        fz_context* ctx = saved.fz();
        const pdfhost::engine::ObjPtr page = saved.PageObject(0, "page");
        pdf_obj* annots = pdf_dict_gets(ctx, page.get(), "Annots");
        ASSERT_EQ(pdf_array_len(ctx, annots), 1);
        pdf_obj* annot = pdf_array_get(ctx, annots, 0);
        EXPECT_STREQ(pdf_to_name(ctx, pdf_dict_gets(ctx, annot, "Subtype")), "Highlight");
        EXPECT_STREQ(pdf_to_text_string(ctx, pdf_dict_gets(ctx, annot, "NM")), "ai_plugin_h");
        EXPECT_EQ(pdf_dict_gets(ctx, annot, "Contents"), nullptr);
    }
    EXPECT_THAT(PdfToText(path), Not(HasSubstr("Beta")));
    EXPECT_EQ(Call("removeAnnots", Object({{"searchKey", key},
                                           {"index", 0},
                                           {"type", "highlight"},
                                           {"uniqueIDPrefix", "ai_plugin_"}}))["ret"]
                  .asInt(),
              0);
}

TEST_F(RedactionInHostTest, ImageUnderAUserRedactionIsBlanked) {
    const std::string path = OpenPdf("scan.pdf", {.pages = {PageDescription::ImageOnly(3)}});
    Json::Value rect(Json::arrayValue);
    for (double v : {72.0, 432.0, 540.0, 720.0})
        rect.append(v);
    Host("userRedact", {{"doc", 1}, {"page", 0}, {"rect", rect}});
    EXPECT_EQ(Call("hasOtherRedact")["data"], Json::Value(true));

    Host("answer", {{"dialog", "messageBox"}, {"value", 1}});
    EXPECT_EQ(Post(R"(["base","redactApply","","r"])"),
              std::vector<std::string>{"{\"data\":[],\"ret\":0,\"uuid\":\"r\"}\n"});
    Save();

    // Every remaining image of the page is blank where the box stood (here: the whole image).
    Document saved = Document::Open(host->Engine(), path);
    fz_context* ctx = saved.fz();
    const pdfhost::engine::ObjPtr page = saved.PageObject(0, "page");
    pdf_obj* xobjects = pdf_dict_getp(ctx, page.get(), "Resources/XObject");
    for (int i = 0; i < pdf_dict_len(ctx, xobjects); ++i) {
        pdf_obj* object = pdf_dict_get_val(ctx, xobjects, i);
        if (!pdf_name_eq(ctx, pdf_dict_gets(ctx, object, "Subtype"), PDF_NAME(Image)))
            continue;
        fz_image* image = pdf_load_image(ctx, saved.pdf(), object);
        fz_pixmap* pixmap =
            fz_get_pixmap_from_image(ctx, image, nullptr, nullptr, nullptr, nullptr);
        const unsigned char* samples = fz_pixmap_samples(ctx, pixmap);
        const int size = fz_pixmap_stride(ctx, pixmap) * fz_pixmap_height(ctx, pixmap);
        EXPECT_EQ(std::count_if(samples, samples + size, [](unsigned char v) { return v < 250; }),
                  0);
        fz_drop_pixmap(ctx, pixmap);
        fz_drop_image(ctx, image);
    }
}

TEST_F(RedactionInHostTest, ReplacedTextIsGoneFromTheSavedFile) {
    const std::string path =
        OpenLines("edit.pdf", {"Account 12345 belongs to Ann Lee", "Ann Lee moved in 2020"});
    EXPECT_EQ(Call("replaceText", Object({{"searchKey", Find("12345")["data"]["searchKey"]},
                                          {"index", 0},
                                          {"text", "XXXXX"}}))["ret"]
                  .asInt(),
              0);
    Save();
    const std::string text = PdfToText(path);
    EXPECT_THAT(text, Not(HasSubstr("12345")));
    EXPECT_THAT(text, HasSubstr("XXXXX"));
    EXPECT_THAT(text, HasSubstr("Ann Lee moved in 2020"));
}

}  // namespace
