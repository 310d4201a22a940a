// Search, annotation, redaction and form commands against real PDF files in pdfhost, checked on
// what a reader of the saved file sees: pdftotext's text, the annotation entries, field values
// and image pixels.
#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <array>
#include <cstdio>

#include "bridge/json_text.h"
#include "engine/document.h"
#include "engine/form_builder.h"
#include "plugin_host_fixture.h"

namespace {

using pdfhost::engine::Document;
using pdfhost::engine::PageDescription;
using pdfhost::engine::PdfDescription;

std::string PdfToText(const std::string& path) {
    std::string text;
    if (FILE* pipe = popen(("pdftotext '" + path + "' - 2>/dev/null").c_str(), "r")) {
        std::array<char, 4096> buffer{};
        while (std::size_t n = fread(buffer.data(), 1, buffer.size(), pipe))
            text.append(buffer.data(), n);
        pclose(pipe);
    }
    return text;
}

class RedactionInHostTest : public PluginHostTest {
  protected:
    void SetUp() override { Start(); }

    std::string OpenText(const std::string& name, const std::vector<std::string>& lines) {
        PdfDescription description;
        description.pages.push_back(PageDescription::TextLines(lines));
        const std::string path = MakePdf(name, description);
        EXPECT_GT(Open(path), 0);
        fileId_ = Call("getCurrentDoc")["data"][0]["id"].asString();
        return path;
    }
    Json::Value Find(const std::string& text) {
        Json::Value params(Json::objectValue);
        params["file"]["id"] = fileId_;
        params["text"] = text;
        return Call("findTexts", params);
    }
    Json::Value AddAnnot(const std::string& key, int index, const std::string& type,
                         const std::string& name, const std::string& contents = "") {
        Json::Value params(Json::objectValue);
        params["searchKey"] = key;
        params["index"] = index;
        params["type"] = type;
        params["uniqueIDName"] = name;
        if (!contents.empty())
            params["contents"] = contents;
        return Call("addAnnot", params);
    }
    void Answer(const char* kind, int value) {
        Json::Value line(Json::objectValue);
        line["host"] = "answer";
        line["dialog"] = kind;
        line["value"] = value;
        Line(line);
    }
    void Save() {
        Json::Value line(Json::objectValue);
        line["host"] = "save";
        line["doc"] = 1;
        for (const Json::Value& output : Line(line))
            EXPECT_FALSE(output.isMember("error")) << output;
    }
    Json::Value ApplyNames(const std::vector<std::string>& names) {
        Json::Value params(Json::objectValue);
        params["uniqueIDNames"] = Json::arrayValue;
        for (const auto& name : names)
            params["uniqueIDNames"].append(name);
        return Call("redactApply", params);
    }

    std::string fileId_;
};

TEST_F(RedactionInHostTest, RedactedTextIsGoneFromTheSavedFileAndTheRestStays) {
    const std::string path =
        OpenText("people.pdf", {"Jane Roe lives at 12 Elm Street", "Contact jane.roe@example.com",
                                "Keep this sentence intact", "Jane Roe signed on Monday"});
    const Json::Value names = Find("Jane Roe");
    ASSERT_EQ(names["ret"].asInt(), 0) << names;
    ASSERT_EQ(names["data"]["count"].asInt(), 2);
    const Json::Value mail = Find("jane.roe@example.com");
    ASSERT_EQ(mail["data"]["count"].asInt(), 1);

    const std::string nameKey = names["data"]["searchKey"].asString();
    EXPECT_EQ(AddAnnot(nameKey, 0, "redact", "ai_plugin_a")["ret"].asInt(), 0);
    EXPECT_EQ(AddAnnot(nameKey, 1, "redact", "ai_plugin_b")["ret"].asInt(), 0);
    EXPECT_EQ(
        AddAnnot(mail["data"]["searchKey"].asString(), 0, "redact", "ai_plugin_c")["ret"].asInt(),
        0);
    EXPECT_EQ(Call("isCurrentDocModified")["data"], Json::Value(true));

    Answer("messageBox", 1);
    const Json::Value applied = ApplyNames({"ai_plugin_a", "ai_plugin_b", "ai_plugin_c", "nope"});
    EXPECT_EQ(applied["ret"].asInt(), 0) << applied;
    ASSERT_EQ(applied["data"].size(), 1u);
    EXPECT_EQ(applied["data"][0].asString(), "nope");
    Save();

    const std::string text = PdfToText(path);
    EXPECT_EQ(text.find("Jane Roe"), std::string::npos) << text;
    EXPECT_EQ(text.find("jane.roe@example.com"), std::string::npos) << text;
    EXPECT_NE(text.find("Keep this sentence intact"), std::string::npos) << text;
    EXPECT_NE(text.find("lives at 12 Elm Street"), std::string::npos) << text;
    EXPECT_NE(text.find("signed on Monday"), std::string::npos) << text;
}

// The plug-in's highlight of a match that is redacted stays, so its record still finds it; what
// it held as text goes with the match.
TEST_F(RedactionInHostTest, AHighlightUnderTheBoxStaysForItsRecordWithoutItsText) {
    const std::string path = OpenText("both.pdf", {"Alpha Beta Gamma"});
    const Json::Value found = Find("Beta");
    const std::string key = found["data"]["searchKey"].asString();
    ASSERT_EQ(AddAnnot(key, 0, "highlight", "ai_plugin_h", "Beta noted")["ret"].asInt(), 0);
    const std::string again = Find("Beta")["data"]["searchKey"].asString();
    ASSERT_EQ(AddAnnot(again, 0, "redact", "ai_plugin_r")["ret"].asInt(), 0);
    Answer("messageBox", 1);
    ASSERT_EQ(ApplyNames({"ai_plugin_r"})["ret"].asInt(), 0);
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
    EXPECT_EQ(PdfToText(path).find("Beta"), std::string::npos);

    Json::Value remove(Json::objectValue);
    remove["searchKey"] = key;
    remove["index"] = 0;
    remove["type"] = "highlight";
    remove["uniqueIDPrefix"] = "ai_plugin_";
    EXPECT_EQ(Call("removeAnnots", remove)["ret"].asInt(), 0);
}

TEST_F(RedactionInHostTest, ImageUnderAUserRedactionIsBlanked) {
    PdfDescription description;
    description.pages.push_back(PageDescription::ImageOnly(3));
    const std::string path = MakePdf("scan.pdf", description);
    ASSERT_GT(Open(path), 0);
    Json::Value redact(Json::objectValue);
    redact["host"] = "userRedact";
    redact["doc"] = 1;
    redact["page"] = 0;
    redact["rect"] = Json::arrayValue;
    for (double v : {72.0, 432.0, 540.0, 720.0})
        redact["rect"].append(v);
    for (const Json::Value& output : Line(redact))
        EXPECT_FALSE(output.isMember("error")) << output;
    EXPECT_EQ(Call("hasOtherRedact")["data"], Json::Value(true));

    Answer("messageBox", 1);
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
        int dark = 0;
        for (int k = 0; k < size; ++k)
            dark += samples[k] < 250 ? 1 : 0;
        EXPECT_EQ(dark, 0);
        fz_drop_pixmap(ctx, pixmap);
        fz_drop_image(ctx, image);
    }
}

TEST_F(RedactionInHostTest, ReplacedTextIsGoneFromTheSavedFile) {
    const std::string path =
        OpenText("edit.pdf", {"Account 12345 belongs to Ann Lee", "Ann Lee moved in 2020"});
    const Json::Value number = Find("12345");
    Json::Value replace(Json::objectValue);
    replace["searchKey"] = number["data"]["searchKey"];
    replace["index"] = 0;
    replace["text"] = "XXXXX";
    EXPECT_EQ(Call("replaceText", replace)["ret"].asInt(), 0);
    Save();
    const std::string text = PdfToText(path);
    EXPECT_EQ(text.find("12345"), std::string::npos) << text;
    EXPECT_NE(text.find("XXXXX"), std::string::npos) << text;
    EXPECT_NE(text.find("Ann Lee moved in 2020"), std::string::npos) << text;
}

}  // namespace
