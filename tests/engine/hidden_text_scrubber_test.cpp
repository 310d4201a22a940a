// Removing hidden copies of redacted text: one generated file per place where a document can
// hold text besides its pages, each checked after a full save by the leak checker (raw and
// inflated bytes, pdftotext), by poppler's pdfinfo and by MuPDF opening it again.
#include <gtest/gtest.h>

#include <gmock/gmock.h>

#include <cstring>
#include <string_view>

#include "engine/error.h"
#include "engine/hidden_text_scrubber.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine_test_support.h"
#include "leak_check.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::EngineTest;
using testing_support::RunCommand;

const std::vector<std::u32string> kRemoved = {U"Ana Lind", U"ana@example.com"};
const std::vector<std::string> kRemovedUtf8 = {"Ana Lind", "ana@example.com"};

// Where a place is planted: the document, its catalog and its first page.
struct Planting {
    fz_context* ctx;
    pdf_document* doc;
    pdf_obj* root;
    pdf_obj* page;
};
using Planter = void (*)(const Planting&);

pdf_obj* Dict(const Planting& p) {
    return pdf_new_dict(p.ctx, p.doc, 4);
}

pdf_obj* Stream(const Planting& p, std::string_view bytes, pdf_obj* dict, bool deflate) {
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    const size_t size = bytes.size();
    fz_buffer* buffer = nullptr;
    if (deflate) {
        size_t length = 0;
        unsigned char* packed = fz_new_deflated_data(p.ctx, &length, data, size, FZ_DEFLATE_BEST);
        buffer = fz_new_buffer_from_data(p.ctx, packed, length);
        pdf_dict_put(p.ctx, dict, PDF_NAME(Filter), PDF_NAME(FlateDecode));
    } else {
        buffer = fz_new_buffer_from_copied_data(p.ctx, data, size);
    }
    pdf_obj* ref = pdf_add_stream(p.ctx, p.doc, buffer, dict, deflate ? 1 : 0);
    fz_drop_buffer(p.ctx, buffer);
    pdf_drop_obj(p.ctx, dict);
    return ref;
}

// A text annotation on the first page whose dictionary gets `key` = `value`.
void Annotation(const Planting& p, const char* subtype, const char* key, const char* value) {
    pdf_obj* annot = Dict(p);
    pdf_dict_put(p.ctx, annot, PDF_NAME(Type), PDF_NAME(Annot));
    pdf_dict_put_drop(p.ctx, annot, PDF_NAME(Subtype), pdf_new_name(p.ctx, subtype));
    pdf_dict_put_rect(p.ctx, annot, PDF_NAME(Rect), fz_make_rect(72, 72, 200, 100));
    pdf_dict_puts_drop(p.ctx, annot, key, pdf_new_text_string(p.ctx, value));
    pdf_dict_put_text_string(p.ctx, annot, PDF_NAME(DA), "/Helv 10 Tf 0 g");
    pdf_obj* annots = pdf_dict_get(p.ctx, p.page, PDF_NAME(Annots));
    if (!pdf_is_array(p.ctx, annots))
        annots = pdf_dict_put_array(p.ctx, p.page, PDF_NAME(Annots), 1);
    pdf_array_push_drop(p.ctx, annots, pdf_add_object_drop(p.ctx, p.doc, annot));
}

pdf_obj* SubDict(const Planting& p, pdf_obj* parent, const char* key) {
    pdf_obj* dict = pdf_new_dict(p.ctx, p.doc, 2);
    pdf_dict_puts_drop(p.ctx, parent, key, dict);
    return dict;
}

void Info(const Planting& p, const char* key, const char* value) {
    pdf_obj* info = pdf_dict_get(p.ctx, pdf_trailer(p.ctx, p.doc), PDF_NAME(Info));
    if (!pdf_is_dict(p.ctx, info)) {
        info = pdf_add_object_drop(p.ctx, p.doc, Dict(p));
        pdf_dict_put_drop(p.ctx, pdf_trailer(p.ctx, p.doc), PDF_NAME(Info), info);
    }
    pdf_dict_puts_drop(p.ctx, info, key, pdf_new_text_string(p.ctx, value));
}

// An attached file named `name` holding `content` in the document's EmbeddedFiles name tree.
void Attachment(const Planting& p, const char* name, const char* content, size_t size,
                bool damaged = false) {
    pdf_obj* fileDict = Dict(p);
    pdf_dict_put(p.ctx, fileDict, PDF_NAME(Type), PDF_NAME(EmbeddedFile));
    pdf_obj* file = nullptr;
    if (damaged) {
        pdf_dict_put(p.ctx, fileDict, PDF_NAME(Filter), PDF_NAME(FlateDecode));
        fz_buffer* junk = fz_new_buffer_from_copied_data(
            p.ctx, reinterpret_cast<const unsigned char*>(content), size);
        file = pdf_add_stream(p.ctx, p.doc, junk, fileDict, 1);
        fz_drop_buffer(p.ctx, junk);
        pdf_drop_obj(p.ctx, fileDict);
    } else {
        file = Stream(p, std::string_view(content, size), fileDict, true);
    }
    pdf_obj* spec = Dict(p);
    pdf_dict_put(p.ctx, spec, PDF_NAME(Type), PDF_NAME(Filespec));
    pdf_dict_put_text_string(p.ctx, spec, PDF_NAME(F), name);
    pdf_dict_put_text_string(p.ctx, spec, PDF_NAME(UF), name);
    pdf_obj* ef = pdf_dict_put_dict(p.ctx, spec, PDF_NAME(EF), 1);
    pdf_dict_put_drop(p.ctx, ef, PDF_NAME(F), file);
    pdf_obj* specRef = pdf_add_object_drop(p.ctx, p.doc, spec);
    pdf_obj* names = pdf_dict_put_dict(p.ctx, p.root, PDF_NAME(Names), 1);
    pdf_obj* files = pdf_dict_put_dict(p.ctx, names, PDF_NAME(EmbeddedFiles), 1);
    pdf_obj* list = pdf_dict_put_array(p.ctx, files, PDF_NAME(Names), 2);
    pdf_array_push_drop(p.ctx, list, pdf_new_text_string(p.ctx, name));
    pdf_array_push_drop(p.ctx, list, specRef);
}

void Outline(const Planting& p, const char* title) {
    pdf_obj* outlines = pdf_add_object_drop(p.ctx, p.doc, Dict(p));
    pdf_obj* item = pdf_add_object_drop(p.ctx, p.doc, Dict(p));
    pdf_dict_put_text_string(p.ctx, item, PDF_NAME(Title), title);
    pdf_dict_put(p.ctx, item, PDF_NAME(Parent), outlines);
    pdf_obj* dest = pdf_dict_put_array(p.ctx, item, PDF_NAME(Dest), 2);
    pdf_array_push(p.ctx, dest, p.page);
    pdf_array_push(p.ctx, dest, PDF_NAME(Fit));
    pdf_dict_put(p.ctx, outlines, PDF_NAME(Type), PDF_NAME(Outlines));
    pdf_dict_put(p.ctx, outlines, PDF_NAME(First), item);
    pdf_dict_put(p.ctx, outlines, PDF_NAME(Last), item);
    pdf_dict_put_int(p.ctx, outlines, PDF_NAME(Count), 1);
    pdf_dict_put_drop(p.ctx, p.root, PDF_NAME(Outlines), outlines);
    pdf_drop_obj(p.ctx, item);
}

// A text field whose value, default, tooltip and appearance show `value`.
void Field(const Planting& p, const char* key, const char* value) {
    pdf_obj* form = pdf_dict_put_dict(p.ctx, p.root, PDF_NAME(AcroForm), 2);
    pdf_obj* fields = pdf_dict_put_array(p.ctx, form, PDF_NAME(Fields), 1);
    pdf_obj* field = Dict(p);
    pdf_dict_put(p.ctx, field, PDF_NAME(Type), PDF_NAME(Annot));
    pdf_dict_put(p.ctx, field, PDF_NAME(Subtype), PDF_NAME(Widget));
    pdf_dict_put(p.ctx, field, PDF_NAME(FT), PDF_NAME(Tx));
    pdf_dict_put_text_string(p.ctx, field, PDF_NAME(T), "client");
    pdf_dict_put_text_string(p.ctx, field, PDF_NAME(DA), "/Helv 10 Tf 0 g");
    pdf_dict_put_rect(p.ctx, field, PDF_NAME(Rect), fz_make_rect(72, 600, 300, 620));
    pdf_dict_puts_drop(p.ctx, field, key, pdf_new_text_string(p.ctx, value));
    pdf_obj* apDict = Dict(p);
    pdf_dict_put(p.ctx, apDict, PDF_NAME(Subtype), PDF_NAME(Form));
    pdf_dict_put_rect(p.ctx, apDict, PDF_NAME(BBox), fz_make_rect(0, 0, 228, 20));
    char content[256];
    fz_snprintf(content, sizeof content, "/Tx BMC BT /Helv 10 Tf 2 5 Td (%s) Tj ET EMC", value);
    pdf_obj* ap = pdf_dict_put_dict(p.ctx, field, PDF_NAME(AP), 1);
    pdf_dict_put_drop(p.ctx, ap, PDF_NAME(N), Stream(p, content, apDict, true));
    pdf_obj* ref = pdf_add_object_drop(p.ctx, p.doc, field);
    pdf_array_push(p.ctx, fields, ref);
    pdf_obj* annots = pdf_dict_put_array(p.ctx, p.page, PDF_NAME(Annots), 1);
    pdf_array_push_drop(p.ctx, annots, ref);
}

struct Place {
    const char* name;
    Planter plant;
};

const Place kPlaces[] = {
    {"InfoTitle", [](const Planting& p) { Info(p, "Title", "Report on ANA LIND"); }},
    {"InfoAuthorUtf16", [](const Planting& p) { Info(p, "Author", "Анна / ana lind"); }},
    {"InfoKeywordsAcrossLines",
     [](const Planting& p) { Info(p, "Keywords", "x, Ana\n  Lind, y"); }},
    {"XmpMetadata",
     [](const Planting& p) {
         pdf_obj* dict = Dict(p);
         pdf_dict_put(p.ctx, dict, PDF_NAME(Type), PDF_NAME(Metadata));
         pdf_dict_put(p.ctx, dict, PDF_NAME(Subtype), PDF_NAME(XML));
         pdf_dict_put_drop(
             p.ctx, p.root, PDF_NAME(Metadata),
             Stream(p,
                    "<?xpacket begin='' id='W5M0'?><x:xmpmeta xmlns:x='adobe:ns:meta/'>"
                    "<dc:creator dc:note='by Ana Lind'>Ana Lind</dc:creator>"
                    "<!-- Ana Lind --></x:xmpmeta><?xpacket end='w'?>",
                    dict, true));
     }},
    {"DamagedXmp",
     [](const Planting& p) {
         pdf_obj* dict = Dict(p);
         pdf_dict_put(p.ctx, dict, PDF_NAME(Type), PDF_NAME(Metadata));
         pdf_dict_put(p.ctx, dict, PDF_NAME(Subtype), PDF_NAME(XML));
         pdf_dict_put(p.ctx, dict, PDF_NAME(Filter), PDF_NAME(FlateDecode));
         fz_buffer* junk = fz_new_buffer_from_copied_data(
             p.ctx, reinterpret_cast<const unsigned char*>("not deflated: Ana Lind"), 22);
         pdf_dict_put_drop(p.ctx, p.root, PDF_NAME(Metadata),
                           pdf_add_stream(p.ctx, p.doc, junk, dict, 1));
         fz_drop_buffer(p.ctx, junk);
         pdf_drop_obj(p.ctx, dict);
     }},
    {"OutlineTitle", [](const Planting& p) { Outline(p, "Chapter: Ana Lind"); }},
    {"NoteContents", [](const Planting& p) { Annotation(p, "Text", "Contents", "call ana lind"); }},
    {"NoteAuthor", [](const Planting& p) { Annotation(p, "Text", "T", "Ana Lind"); }},
    {"NoteSubject", [](const Planting& p) { Annotation(p, "Text", "Subj", "About Ana Lind"); }},
    {"NoteRichText",
     [](const Planting& p) {
         Annotation(p, "FreeText", "RC", "<body><p style='x'>Dear Ana Lind</p></body>");
     }},
    {"LinkUri",
     [](const Planting& p) {
         Annotation(p, "Link", "Contents", "link");
         pdf_obj* annots = pdf_dict_get(p.ctx, p.page, PDF_NAME(Annots));
         pdf_obj* link = pdf_array_get(p.ctx, annots, pdf_array_len(p.ctx, annots) - 1);
         pdf_obj* action = pdf_dict_put_dict(p.ctx, link, PDF_NAME(A), 2);
         pdf_dict_put(p.ctx, action, PDF_NAME(S), PDF_NAME(URI));
         pdf_dict_put_string(p.ctx, action, PDF_NAME(URI), "mailto:ana@example.com", 22);
     }},
    {"JavaScriptString",
     [](const Planting& p) {
         pdf_obj* action = SubDict(p, p.root, "OpenAction");
         pdf_dict_put(p.ctx, action, PDF_NAME(S), PDF_NAME(JavaScript));
         pdf_dict_put_text_string(p.ctx, action, PDF_NAME(JS), "app.alert('Ana Lind');");
     }},
    {"JavaScriptStream",
     [](const Planting& p) {
         pdf_obj* action = SubDict(p, p.root, "OpenAction");
         pdf_dict_put(p.ctx, action, PDF_NAME(S), PDF_NAME(JavaScript));
         pdf_dict_put_drop(p.ctx, action, PDF_NAME(JS),
                           Stream(p, "app.alert('ANA LIND');\n", Dict(p), true));
     }},
    {"FieldValue", [](const Planting& p) { Field(p, "V", "Ana Lind"); }},
    {"FieldDefault", [](const Planting& p) { Field(p, "DV", "Ana Lind"); }},
    {"FieldTooltip", [](const Planting& p) { Field(p, "TU", "Name of Ana Lind"); }},
    {"FieldExportValues",
     [](const Planting& p) {
         Field(p, "V", "x");
         pdf_obj* field = pdf_array_get(p.ctx, pdf_dict_getp(p.ctx, p.root, "AcroForm/Fields"), 0);
         pdf_obj* opt = pdf_dict_put_array(p.ctx, field, PDF_NAME(Opt), 1);
         pdf_obj* pair = pdf_array_push_array(p.ctx, opt, 2);
         pdf_array_push_text_string(p.ctx, pair, "ana@example.com");
         pdf_array_push_text_string(p.ctx, pair, "Ana Lind");
     }},
    {"XfaPacket",
     [](const Planting& p) {
         Field(p, "V", "x");
         pdf_obj* form = pdf_dict_get(p.ctx, p.root, PDF_NAME(AcroForm));
         pdf_obj* xfa = pdf_dict_put_array(p.ctx, form, PDF_NAME(XFA), 2);
         pdf_array_push_text_string(p.ctx, xfa, "datasets");
         pdf_array_push_drop(
             p.ctx, xfa,
             Stream(p, "<xfa:datasets><client name=\"Ana Lind\">Ana Lind</client></xfa:datasets>",
                    Dict(p), true));
     }},
    {"StructureTree",
     [](const Planting& p) {
         pdf_obj* tree = SubDict(p, p.root, "StructTreeRoot");
         pdf_obj* elem = pdf_dict_put_dict(p.ctx, tree, PDF_NAME(K), 4);
         pdf_dict_put(p.ctx, elem, PDF_NAME(S), PDF_NAME(P));
         pdf_dict_put_text_string(p.ctx, elem, PDF_NAME(Alt), "photo of Ana Lind");
         pdf_dict_put_text_string(p.ctx, elem, PDF_NAME(ActualText), "Ana Lind");
         pdf_dict_put_text_string(p.ctx, elem, PDF_NAME(E), "Ana Lind");
     }},
    {"PageLabel",
     [](const Planting& p) {
         pdf_obj* labels = SubDict(p, p.root, "PageLabels");
         pdf_obj* nums = pdf_dict_put_array(p.ctx, labels, PDF_NAME(Nums), 2);
         pdf_array_push_int(p.ctx, nums, 0);
         pdf_obj* label = pdf_array_push_dict(p.ctx, nums, 2);
         pdf_dict_put_text_string(p.ctx, label, PDF_NAME(P), "Ana Lind-");
     }},
    {"AttachmentName", [](const Planting& p) { Attachment(p, "ana lind.txt", "harmless", 8); }},
    {"AttachmentContentUtf8",
     [](const Planting& p) { Attachment(p, "a.txt", "to: Ana Lind", 12); }},
    {"AttachmentContentUtf16",
     [](const Planting& p) {
         static const char kUtf16Le[] =
             "\xff\xfe"
             "A\0N\0A\0 \0l\0i\0n\0d\0";
         Attachment(p, "b.txt", kUtf16Le, sizeof kUtf16Le - 1);
     }},
    {"AttachmentDamaged",
     [](const Planting& p) { Attachment(p, "c.txt", "raw Ana Lind", 12, true); }},
    {"FreeTextAppearance",
     [](const Planting& p) {
         Annotation(p, "FreeText", "Contents", "see note");
         pdf_obj* annots = pdf_dict_get(p.ctx, p.page, PDF_NAME(Annots));
         pdf_obj* note = pdf_array_get(p.ctx, annots, pdf_array_len(p.ctx, annots) - 1);
         pdf_obj* apDict = Dict(p);
         pdf_dict_put(p.ctx, apDict, PDF_NAME(Subtype), PDF_NAME(Form));
         pdf_dict_put_rect(p.ctx, apDict, PDF_NAME(BBox), fz_make_rect(0, 0, 128, 28));
         pdf_obj* ap = pdf_dict_put_dict(p.ctx, note, PDF_NAME(AP), 1);
         pdf_dict_put_drop(p.ctx, ap, PDF_NAME(N),
                           Stream(p, "BT /Helv 10 Tf 2 5 Td (Ana Lind) Tj ET", apDict, false));
     }},
};

class HiddenTextScrubberTest : public EngineTest, public ::testing::WithParamInterface<Place> {
  protected:
    // A one-page document with `plant` applied, saved and opened again.
    Document Planted(Planter plant) {
        const std::string path =
            WritePdf("source.pdf", PdfDescription{.pages = {PageDescription::TextLines(
                                                      {"Quarterly report", "Page text"})}});
        Document document = Document::Open(context_, path);
        fz_context* ctx = document.fz();
        pdf_document* doc = document.pdf();
        CallMupdf(ctx, "plant", [&] {
            pdf_obj* root = pdf_dict_get(ctx, pdf_trailer(ctx, doc), PDF_NAME(Root));
            plant(Planting{ctx, doc, root, pdf_lookup_page_obj(ctx, doc, 0)});
        });
        const std::string planted = PathOf("planted.pdf");
        document.SaveFull(planted);
        return Document::Open(context_, planted);
    }

    std::string Scrubbed(Planter plant) {
        Document document = Planted(plant);
        HiddenTextScrubber(document, kRemoved).Run();
        const std::string path = PathOf("scrubbed.pdf");
        document.SaveFull(path);
        return path;
    }
};

TEST_P(HiddenTextScrubberTest, RemovedTextLeavesThePlaceAndTheFileStaysValid) {
    const std::string planted = PathOf("planted.pdf");
    Planted(GetParam().plant);
    ASSERT_NE(leak_check::Leaks(planted, kRemovedUtf8), "") << "the case plants nothing";

    const std::string path = Scrubbed(GetParam().plant);
    EXPECT_EQ(leak_check::Leaks(path, kRemovedUtf8), "");
    EXPECT_EQ(RunCommand("pdfinfo '" + path + "' 2>&1 >/dev/null; echo $?"), "0\n")
        << "poppler reads the file without an error";
    Document reopened = Document::Open(context_, path);
    EXPECT_EQ(reopened.PageCount(), 1);
    EXPECT_THAT(RunCommand("pdftotext -q '" + path + "' -"), HasSubstr("Quarterly report"))
        << "the page's own text is not touched";
}

INSTANTIATE_TEST_SUITE_P(Places, HiddenTextScrubberTest, ::testing::ValuesIn(kPlaces),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace pdfhost::engine
