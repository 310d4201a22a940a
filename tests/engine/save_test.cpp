#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "engine/document.h"
#include "engine/error.h"
#include "engine/mupdf_call.h"
#include "engine/mupdf_types.h"
#include "engine/permissions.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using testing_support::EngineTest;
using testing_support::ReadBytes;
using testing_support::RunCommand;
namespace fs = std::filesystem;

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
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
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

TEST_F(SaveTest, EncryptionIsKept) {
    PdfDescription recipe{.pages = {PageDescription::TextLines({"secret"})}};
    recipe.encryption = Encryption{.owner_password = "owner", .permissions = permission::kPrint};
    Document document = Document::Open(context_, WritePdf("enc.pdf", recipe));
    document.SetInfoString("Title", "still locked");
    document.SaveFull(PathOf("resaved.pdf"));

    const Document reopened = Document::Open(context_, PathOf("resaved.pdf"));
    EXPECT_TRUE(reopened.IsEncrypted());
    EXPECT_EQ(reopened.Permissions() & permission::kCopy, 0u);
    EXPECT_EQ(reopened.InfoString("Title"), "still locked");
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

}  // namespace
}  // namespace pdfhost::engine
