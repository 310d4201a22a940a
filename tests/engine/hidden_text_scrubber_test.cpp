// Removing hidden copies of redacted text: one generated file per place where a document can
// hold text besides its pages, each checked after a full save by the leak checker (raw and
// inflated bytes, pdftotext), by poppler's pdfinfo and by MuPDF opening it again.
#include <gtest/gtest.h>

#include <gmock/gmock.h>

#include <cctype>
#include <cstring>
#include <string_view>

#include "engine/error.h"
#include "engine/hidden_text_scrubber.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/permissions.h"
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
        const ObjPtr page = document.PageObject(0, "plant");
        CallMupdf(ctx, "plant", [&] {
            pdf_obj* root = pdf_dict_get(ctx, pdf_trailer(ctx, doc), PDF_NAME(Root));
            plant(Planting{ctx, doc, root, page.get()});
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
    Document document = Planted([](const Planting& p) {
        Info(p, "Title", "Annual figures");
        Info(p, "Author", "Ana Lind");
        Outline(p, "Contents");
        Attachment(p, "figures.csv", "a,b\n1,2\n", 8);
        Annotation(p, "Text", "Contents", "\xd0\x90 note");  // UTF-16 in the file
    });
    const std::string title = StringAt(document, "Info/Title");
    const std::string outline = StringAt(document, "Root/Outlines/First/Title");
    const std::string note = StringAt(document, "Root/Pages/Kids/0/Annots/0/Contents");
    const std::string attachment = FirstAttachment(document);
    ASSERT_FALSE(note.empty());

    const ScrubCounts counts = HiddenTextScrubber(document, kRemoved).Run();
    EXPECT_EQ(counts.strings, 1);
    EXPECT_EQ(counts.files, 0);
    document.SaveFull(PathOf("scrubbed.pdf"));
    Document reopened = Document::Open(context_, PathOf("scrubbed.pdf"));
    EXPECT_EQ(StringAt(reopened, "Info/Author"), "");
    EXPECT_EQ(StringAt(reopened, "Info/Title"), title);
    EXPECT_EQ(StringAt(reopened, "Root/Outlines/First/Title"), outline);
    EXPECT_EQ(StringAt(reopened, "Root/Pages/Kids/0/Annots/0/Contents"), note);
    EXPECT_EQ(FirstAttachment(reopened), attachment);
}

TEST_F(ScrubberKeepsTest, KeyNamesOperatorsAndSingleLettersChangeOnlyStrings) {
    Document document = Planted([](const Planting& p) {
        Info(p, "Title", "The Type of Tj");
        Field(p, "V", "type here");
    });
    const ScrubCounts counts =
        HiddenTextScrubber(document, {U"Tj", U"Type", U"e", U"Tf", U"Helv"}).Run();
    EXPECT_GE(counts.strings, 2);
    const std::string path = PathOf("scrubbed.pdf");
    document.SaveFull(path);
    EXPECT_EQ(RunCommand("pdfinfo '" + path + "' 2>&1 >/dev/null; echo $?"), "0\n");
    Document reopened = Document::Open(context_, path);
    EXPECT_EQ(reopened.PageCount(), 1) << "/Type /Page and /Type /Catalog are names: kept";
    EXPECT_EQ(StringAt(reopened, "Info/Title"), "Th  of ");
    EXPECT_EQ(StringAt(reopened, "Root/AcroForm/Fields/0/V"), " hr");
    EXPECT_EQ(StringAt(reopened, "Root/AcroForm/Fields/0/DA"), "/Helv 10 Tf 0 g")
        << "a default appearance is operators, not text";
    EXPECT_THAT(RunCommand("pdftotext -q '" + path + "' -"), HasSubstr("Page text"))
        << "content streams keep their operators and text";
}

TEST_F(ScrubberKeepsTest, EncryptedDocumentKeepsItsEncryption) {
    const std::string source = WritePdf(
        "encrypted.pdf", PdfDescription{.pages = {PageDescription::TextLines({"Page text"})},
                                        .info = {{"Title", "Ana Lind file"}},
                                        .encryption = Encryption{.owner_password = "owner",
                                                                 .permissions = permission::kAll}});
    Document document = Document::Open(context_, source);
    HiddenTextScrubber(document, kRemoved).Run();
    const std::string path = PathOf("scrubbed.pdf");
    document.SaveFull(path);

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

// A PDF 1.5 file whose Info dictionary lies in an object stream, with a cross-reference stream.
std::string ObjectStreamPdf() {
    const std::string info = "<< /Title (Report on Ana Lind) /Author (Editor) >>";
    const std::string objstm = "4 0 " + info;
    std::string pdf = "%PDF-1.5\n";
    std::vector<size_t> offsets(6);
    auto add = [&](int num, const std::string& body) {
        offsets[static_cast<size_t>(num)] = pdf.size();
        pdf += std::to_string(num) + " 0 obj\n" + body + "\nendobj\n";
    };
    add(1, "<< /Type /Catalog /Pages 2 0 R >>");
    add(2, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>");
    add(3, "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] >>");
    add(5, "<< /Type /ObjStm /N 1 /First 4 /Length " + std::to_string(objstm.size()) +
               " >>\nstream\n" + objstm + "\nendstream");
    const size_t xref = pdf.size();
    std::string rows;
    auto row = [&](int type, size_t field2, int field3) {
        rows += static_cast<char>(type);
        rows += static_cast<char>((field2 >> 8) & 0xFF);
        rows += static_cast<char>(field2 & 0xFF);
        rows += static_cast<char>(field3);
    };
    row(0, 0, 0);
    for (int num = 1; num <= 3; ++num)
        row(1, offsets[static_cast<size_t>(num)], 0);
    row(2, 5, 0);
    row(1, offsets[5], 0);
    row(1, xref, 0);
    pdf += "6 0 obj\n<< /Type /XRef /Size 7 /W [1 2 1] /Root 1 0 R /Info 4 0 R /Length " +
           std::to_string(rows.size()) + " >>\nstream\n" + rows + "\nendstream\nendobj\n";
    pdf += "startxref\n" + std::to_string(xref) + "\n%%EOF\n";
    return pdf;
}

TEST_F(ScrubberKeepsTest, TextInAnObjectStreamIsRemoved) {
    const std::string source = PathOf("objstm.pdf");
    testing_support::WriteBytes(source, ObjectStreamPdf());
    ASSERT_EQ(RunCommand("pdfinfo '" + source + "' 2>&1 | grep -c 'Ana Lind'"), "1\n")
        << "poppler reads the title from the object stream";
    Document document = Document::Open(context_, source);
    EXPECT_EQ(HiddenTextScrubber(document, kRemoved).Run().strings, 1);
    const std::string path = PathOf("scrubbed.pdf");
    document.SaveFull(path);
    EXPECT_EQ(leak_check::Leaks(path, kRemovedUtf8), "");
    EXPECT_EQ(RunCommand("pdfinfo '" + path + "' 2>&1 | grep -c 'Author: *Editor'"), "1\n");
}

}  // namespace
}  // namespace pdfhost::engine
