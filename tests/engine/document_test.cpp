// Documents: opening (damaged, encrypted and repaired files), Info strings, pages and their
// objects, rendering, the page map of a nested page tree, saving in place, and the MuPDF calls
// beneath, whose errors become exceptions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "engine/context.h"
#include "engine/document.h"
#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/page_object_number.h"
#include "engine/permissions.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::ThrowsMessage;
namespace fs = std::filesystem;

std::string OpenError(Context& context, const std::string& path, const std::string& password = {}) {
    try {
        Document::Open(context, path, password);
    } catch (const Error& error) {
        return error.what();
    }
    return "opened";
}

PdfDescription ThreePages() {
    return PdfDescription{.pages = {PageDescription::TextLines({"first"}), PageDescription::Blank(),
                                    PageDescription::ImageOnly()}};
}

using OpenTest = EngineTest;

TEST_F(OpenTest, UnusableFilesGiveClearErrors) {
    EXPECT_THAT(OpenError(context_, PathOf("missing.pdf")), HasSubstr("no such file"));
    EXPECT_THAT(OpenError(context_, folder_.string()), HasSubstr("is a folder"));

    WriteBytes(PathOf("notes.txt"), "Just some words, nothing like a PDF.\n");
    EXPECT_THAT(OpenError(context_, PathOf("notes.txt")), HasSubstr("not a PDF file"));

    WriteBytes(PathOf("garbage.pdf"), "%PDF-1.7\n" + std::string(4000, '\x9c') + "\n%%EOF\n");
    EXPECT_THAT(OpenError(context_, PathOf("garbage.pdf")),
                AllOf(HasSubstr("cannot open " + PathOf("garbage.pdf")), HasSubstr("damaged")));

    const std::string bytes = ReadBytes(WritePdf("whole.pdf", ThreePages()));
    WriteBytes(PathOf("stub.pdf"), bytes.substr(0, 60));
    EXPECT_THAT(OpenError(context_, PathOf("stub.pdf")), HasSubstr("damaged"));
}

TEST_F(OpenTest, FileWithoutCrossReferenceIsRepaired) {
    const std::string bytes = ReadBytes(WritePdf("whole.pdf", ThreePages()));
    const std::size_t xref = bytes.rfind("xref");
    ASSERT_NE(xref, std::string::npos);
    context_.TakeWarnings();

    Document document = OpenBytes(bytes.substr(0, xref), "cut.pdf");
    EXPECT_EQ(document.PageCount(), 3);
    EXPECT_EQ(document.PageObjects(0), std::vector<PageObjectType>{PageObjectType::kText});
    EXPECT_FALSE(context_.TakeWarnings().empty());
}

PdfDescription NoCopyRecipe(EncryptionMethod method, const std::string& user_password) {
    PdfDescription recipe{.pages = {PageDescription::TextLines({"secret"})}};
    recipe.encryption = Encryption{.method = method,
                                   .user_password = user_password,
                                   .owner_password = "owner-secret",
                                   .permissions = permission::kPrint | permission::kAnnotate};
    return recipe;
}

TEST_F(OpenTest, EncryptedFilesGrantAllOnlyToTheOwnerAndAskForTheUserPassword) {
    const std::string path = WritePdf("nocopy.pdf", NoCopyRecipe(EncryptionMethod::kAes128, ""));
    const Document reader = Document::Open(context_, path);
    EXPECT_TRUE(reader.IsEncrypted());
    EXPECT_EQ(reader.Permissions() & (permission::kCopy | permission::kModify), 0u);
    EXPECT_NE(reader.Permissions() & permission::kAnnotate, 0u);
    EXPECT_NE(reader.Permissions() & permission::kPrint, 0u);

    EXPECT_EQ(Document::Open(context_, path, "owner-secret").Permissions(), permission::kAll);
    // A wrong password for a file that opens without one leaves the reader's rights.
    EXPECT_EQ(Document::Open(context_, path, "guess").Permissions(), reader.Permissions());

    // A user password is required and checked.
    const std::string locked =
        WritePdf("locked.pdf", NoCopyRecipe(EncryptionMethod::kRc4_128, "user-pw"));
    EXPECT_THAT(OpenError(context_, locked), HasSubstr("password is required"));
    EXPECT_THAT(OpenError(context_, locked, "nope"), HasSubstr("wrong password"));
    const Document user = Document::Open(context_, locked, "user-pw");
    EXPECT_EQ(user.PageCount(), 1);
    EXPECT_EQ(user.Permissions() & permission::kCopy, 0u);
    EXPECT_EQ(Document::Open(context_, locked, "owner-secret").Permissions(), permission::kAll);
}

TEST_F(OpenTest, InfoStringsReadBackByteExactAndAreAbsentUntilSet) {
    const std::string utf16_title("\xFE\xFF\x00T\x00\xE9\x00(", 8);
    PdfDescription recipe{.pages = {PageDescription::Blank()}};
    recipe.info = {{"CreationDate", "D:20240102030405+01'00'"},
                   {"ModDate", "D:20240301000000Z"},
                   {"Title", utf16_title},
                   {"Odd Key", "back\\slash (paren"}};
    const Document document = OpenWritten(recipe);
    EXPECT_TRUE(document.HasInfo());
    for (const auto& [key, value] : recipe.info)
        EXPECT_EQ(document.InfoString(key), value) << key;
    EXPECT_EQ(document.InfoString("Author"), std::nullopt);

    Document plain = OpenWritten(ThreePages(), "plain.pdf");
    EXPECT_FALSE(plain.HasInfo());
    EXPECT_EQ(plain.InfoString("Title"), std::nullopt);
    plain.SetInfoString("Title", "Quarterly report");
    EXPECT_TRUE(plain.HasInfo());
    EXPECT_EQ(plain.InfoString("Title"), "Quarterly report");
    EXPECT_EQ(plain.Revision(), 1u);
}

TEST_F(OpenTest, BlankDocumentIsOneLetterPage) {
    const Document document = Document::CreateBlank(context_);
    EXPECT_EQ(document.PageCount(), 1);
    EXPECT_EQ(document.PageBox(0), (Rect{0, 0, 612, 792}));
    EXPECT_TRUE(document.Path().empty());
    EXPECT_TRUE(document.PageObjects(0).empty());
}

TEST_F(OpenTest, GoodFileOpensWithItsPagesAndPageIndexesAndResolutionsAreChecked) {
    const Document document = OpenWritten(ThreePages(), "three.pdf");
    EXPECT_EQ(document.PageCount(), 3);
    EXPECT_EQ(document.Path(), PathOf("three.pdf"));
    EXPECT_FALSE(document.IsEncrypted());
    EXPECT_EQ(document.Permissions(), permission::kAll);
    EXPECT_EQ(document.Revision(), 0u);
    for (int bad : {-1, 3, 1000}) {
        EXPECT_THROW(document.PageObjects(bad), Error) << bad;
        EXPECT_THROW(document.PageBox(bad), Error) << bad;
        EXPECT_THROW(document.Render(bad, 72), Error) << bad;
    }
    EXPECT_NO_THROW(document.PageBox(2));
    EXPECT_THROW(document.Render(0, 0), Error);
    EXPECT_THROW(document.Render(0, 5000), Error);
}

// Drops the picture of the page: its XObject resources and the content that draws it.
void RemoveImages(Document& document, int page) {
    fz_context* ctx = document.fz();
    pdf_document* doc = document.pdf();
    const std::string text = "BT /F1 12 Tf 72 720 Td (kept) Tj ET\n";
    BufferPtr content(ctx, CallMupdf(ctx, "buffer", [&] {
                          return fz_new_buffer_from_copied_data(
                              ctx, reinterpret_cast<const unsigned char*>(text.data()),
                              text.size());
                      }));
    const ObjPtr page_ref = document.PageObject(page, "remove images");
    CallMupdf(ctx, "remove images", [&] {
        pdf_obj* page_obj = page_ref.get();
        pdf_obj* resources = pdf_dict_get_inheritable(ctx, page_obj, PDF_NAME(Resources));
        pdf_dict_del(ctx, resources, PDF_NAME(XObject));
        pdf_update_stream(ctx, doc, pdf_dict_get(ctx, page_obj, PDF_NAME(Contents)), content.get(),
                          0);
    });
    document.MarkChanged();
}

std::vector<std::string> FolderEntries(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

PdfDescription TextAndImage() {
    PageDescription mixed = PageDescription::TextLines({"kept"});
    mixed.Add(ImageItem{.seed = 5});
    return PdfDescription{.pages = {PageDescription::TextLines({"cover"}), mixed}};
}

using SaveTest = EngineTest;

TEST_F(SaveTest, InPlaceSaveDropsRemovedImageFromTheFile) {
    const std::string path = WritePdf("doc.pdf", TextAndImage());
    ASSERT_NE(ReadBytes(path).find("/Subtype/Image"), std::string::npos);

    Document document = Document::Open(context_, path);
    RemoveImages(document, 1);
    EXPECT_EQ(document.Revision(), 1u);
    document.SaveFull(path);

    EXPECT_EQ(ReadBytes(path).find("/Subtype/Image"), std::string::npos);
    EXPECT_THAT(RunCommand("pdftotext '" + path + "' -"), HasSubstr("kept"));
    EXPECT_EQ(FolderEntries(folder_), std::vector<std::string>{"doc.pdf"});

    const Document reopened = Document::Open(context_, path);
    EXPECT_EQ(reopened.PageCount(), 2);
    EXPECT_EQ(reopened.PageObjects(1), std::vector<PageObjectType>{PageObjectType::kText});
    // The document that wrote the file still reads its own pages afterwards.
    EXPECT_EQ(document.PageObjects(0), std::vector<PageObjectType>{PageObjectType::kText});
}

TEST_F(SaveTest, FailedSaveKeepsTheOldFileAndLeavesNothingBehind) {
    const std::string original = WritePdf("original.pdf", TextAndImage());
    const std::string before = ReadBytes(original);
    Document document = Document::Open(context_, original);
    RemoveImages(document, 1);

    // The target is a folder: the rename fails after the bytes were written.
    fs::create_directory(PathOf("taken"));
    fs::copy_file(original, PathOf("taken") + "/inner.pdf");
    EXPECT_THROW(document.SaveFull(PathOf("taken")), Error);
    EXPECT_EQ(FolderEntries(folder_), (std::vector<std::string>{"original.pdf", "taken"}));
    EXPECT_EQ(FolderEntries(PathOf("taken")), std::vector<std::string>{"inner.pdf"});

    // A folder nobody may write into, not even root.
    EXPECT_THAT([&] { document.SaveFull("/proc/pdfhost-save-test.pdf"); },
                ::testing::ThrowsMessage<Error>(HasSubstr("cannot save")));
    EXPECT_FALSE(fs::exists("/proc/pdfhost-save-test.pdf"));

    EXPECT_EQ(document.Path(), original);
    EXPECT_EQ(ReadBytes(original), before);
}

using Types = std::vector<PageObjectType>;
using enum PageObjectType;

using PageObjectsTest = EngineTest;

// Each page of one document lists its own content objects in content order; a form XObject
// counts once, whatever it draws inside.
TEST_F(PageObjectsTest, EachPageListsItsObjectsInContentOrder) {
    PageDescription mixed;
    mixed.Add(TextItem{.text = "heading"})
        .Add(ImageItem{})
        .Add(PathItem{})
        .Add(FormItem{})
        .Add(ShadingItem{})
        .Add(TextItem{.y = 100, .text = "footer"})
        .Add(ImageItem{.placement = {300, 72, 400, 172}, .seed = 3});
    const std::vector<std::pair<PageDescription, Types>> pages = {
        {PageDescription::Blank(), {}},
        {PageDescription::TextLines({"one", "two", "three"}), {kText, kText, kText}},
        {PageDescription::ImageOnly(), {kImage}},
        {PageDescription::PathsOnly(), {kPath, kPath}},
        {PageDescription().Add(ShadingItem{}), {kShading}},
        {PageDescription::FormOnly("inside the form"), {kForm}},
        {mixed, {kText, kImage, kPath, kForm, kShading, kText, kImage}},
    };
    PdfDescription recipe;
    for (const auto& [page, types] : pages)
        recipe.pages.push_back(page);
    const Document document = OpenWritten(recipe, "pages.pdf");
    for (std::size_t i = 0; i < pages.size(); ++i)
        EXPECT_EQ(document.PageObjects(static_cast<int>(i)), pages[i].second) << i;
}

constexpr int kPages = 5;

// Five pages in a tree of two levels; page N is 100 + N points wide. Page 0 links to page 2 by
// its number and to page 3 by a reference, page 1 has a go-to action naming page 4 by number.
class PageMapTest : public EngineTest {
  protected:
    Document OpenTree() {
        RawPdf pdf;
        for (const char* object :
             {"<< /Type /Catalog /Pages 2 0 R >>",
              "<< /Type /Pages /Kids [4 0 R 3 0 R 8 0 R] /Count 5 >>",
              "<< /Type /Pages /Parent 2 0 R /Kids [5 0 R 6 0 R 7 0 R] /Count 3 >>",
              "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 100 200] /Annots [9 0 R 10 0 R] >>",
              "<< /Type /Page /Parent 3 0 R /MediaBox [0 0 101 200] /Annots [11 0 R] >>",
              "<< /Type /Page /Parent 3 0 R /MediaBox [0 0 102 200] >>",
              "<< /Type /Page /Parent 3 0 R /MediaBox [0 0 103 200] >>",
              "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 104 200] >>",
              "<< /Type /Annot /Subtype /Link /Rect [0 0 10 10] /Dest [2 /XYZ 0 0 0] >>",
              "<< /Type /Annot /Subtype /Link /Rect [0 0 10 10] /Dest [7 0 R /Fit] >>",
              "<< /Type /Annot /Subtype /Link /Rect [0 0 10 10] /A << /S /GoTo /D [4 /Fit] >> "
              ">>"})
            pdf.Add(object);
        return OpenBytes(pdf.Bytes(1), "tree.pdf");
    }

    // The references held on each page's dictionary besides the one asked for here.
    static std::vector<int> References(const Document& document) {
        std::vector<int> refs;
        for (int page = 0; page < kPages; ++page) {
            const ObjPtr dict = document.PageObject(page, "test");
            refs.push_back(pdf_obj_refs(document.fz(), dict.get()));
        }
        return refs;
    }
};

TEST_F(PageMapTest, EveryPageOfANestedTreeIsFoundThroughTheMap) {
    const Document document = OpenTree();
    ASSERT_NE(document.pdf()->rev_page_map, nullptr) << "the pages are not indexed";
    for (int page = 0; page < kPages; ++page) {
        SCOPED_TRACE(page);
        EXPECT_EQ(document.PageBox(page).Width(), 100 + page);
        const ObjPtr dict = document.PageObject(page, "test");
        EXPECT_EQ(PageIndexOf(document, dict.get()), page);
        const ObjPtr reference(
            document.fz(),
            pdf_new_indirect(document.fz(), document.pdf(), PageObjectNumber(document, page), 0));
        EXPECT_EQ(PageIndexOf(document, reference.get()), page);
    }
    const ObjPtr notAPage(document.fz(), pdf_new_dict(document.fz(), document.pdf(), 1));
    EXPECT_EQ(PageIndexOf(document, notAPage.get()), -1);
    EXPECT_THROW(document.PageObject(kPages, "test"), Error);
    EXPECT_THROW(document.LoadPage(-1, "test"), Error);
}

// Whatever MuPDF keeps on a lookup through its map is given back: neither lookups nor loads,
// of pages with links to other pages or of a page that is already open, leave a reference on
// any page's dictionary.
TEST_F(PageMapTest, LookupsAndLoadsLeaveNoReferenceBehind) {
    const Document document = OpenTree();
    const std::vector<int> before = References(document);
    for (int round = 0; round < 3; ++round) {
        for (int page = 0; page < kPages; ++page) {
            const ObjPtr dict = document.PageObject(page, "test");
            const PagePtr loaded = document.LoadPage(page, "test");
            EXPECT_EQ(pdf_resolve_indirect(document.fz(), loaded.get()->obj),
                      pdf_resolve_indirect(document.fz(), dict.get()));
            const PagePtr again = document.LoadPage(page, "test");
            EXPECT_EQ(again.get(), loaded.get());
        }
    }
    EXPECT_EQ(References(document), before);
}

TEST(MupdfCallTest, MupdfErrorsBecomeExceptionsCppOnesPassAndTheContextStaysUsable) {
    Context context;
    fz_context* ctx = context.get();
    // Far more failures than MuPDF's error stack is deep: each one must unwind it fully.
    for (int i = 0; i < 1000; ++i) {
        EXPECT_THAT(
            [&] {
                CallMupdf(ctx, "opening a missing file",
                          [&] { return pdf_open_document(ctx, "/nonexistent/x.pdf"); });
            },
            ThrowsMessage<Error>(HasSubstr("opening a missing file: ")));
    }
    EXPECT_EQ(CallMupdf(ctx, "arithmetic", [] { return 6 * 7; }), 42);
    DocumentPtr doc(ctx, CallMupdf(ctx, "create", [&] { return pdf_create_document(ctx); }));
    EXPECT_EQ(CallMupdf(ctx, "count", [&] { return pdf_count_pages(ctx, doc.get()); }), 0);
    // C++ exceptions pass through unchanged.
    EXPECT_THAT([&] { CallMupdf(ctx, "work", [] { throw std::out_of_range("mine"); }); },
                ThrowsMessage<std::out_of_range>("mine"));
    const auto named = [] { return 1; };
    EXPECT_EQ(CallMupdf(ctx, "after", named), 1);
}

}  // namespace
}  // namespace pdfhost::engine
