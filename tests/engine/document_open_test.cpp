#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/document.h"
#include "engine/error.h"
#include "engine/permissions.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using testing_support::EngineTest;
using testing_support::ReadBytes;
using testing_support::WriteBytes;

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

TEST_F(OpenTest, GoodFileOpensWithItsPages) {
    const std::string path = WritePdf("good.pdf", ThreePages());
    Document document = Document::Open(context_, path);
    EXPECT_EQ(document.PageCount(), 3);
    EXPECT_EQ(document.Path(), path);
    EXPECT_FALSE(document.IsEncrypted());
    EXPECT_EQ(document.Permissions(), permission::kAll);
    EXPECT_EQ(document.Revision(), 0u);
}

TEST_F(OpenTest, UnusableFilesGiveClearErrors) {
    EXPECT_THAT(OpenError(context_, PathOf("missing.pdf")), HasSubstr("no such file"));
    EXPECT_THAT(OpenError(context_, folder_.string()), HasSubstr("is a folder"));

    WriteBytes(PathOf("notes.txt"), "Just some words, nothing like a PDF.\n");
    EXPECT_THAT(OpenError(context_, PathOf("notes.txt")), HasSubstr("not a PDF file"));

    WriteBytes(PathOf("garbage.pdf"), "%PDF-1.7\n" + std::string(4000, '\x9c') + "\n%%EOF\n");
    const std::string garbage = OpenError(context_, PathOf("garbage.pdf"));
    EXPECT_THAT(garbage, HasSubstr("cannot open " + PathOf("garbage.pdf")));
    EXPECT_THAT(garbage, HasSubstr("damaged"));

    const std::string bytes = ReadBytes(WritePdf("whole.pdf", ThreePages()));
    WriteBytes(PathOf("stub.pdf"), bytes.substr(0, 60));
    EXPECT_THAT(OpenError(context_, PathOf("stub.pdf")), HasSubstr("damaged"));
}

TEST_F(OpenTest, FileWithoutCrossReferenceIsRepaired) {
    const std::string bytes = ReadBytes(WritePdf("whole.pdf", ThreePages()));
    const std::size_t xref = bytes.rfind("xref");
    ASSERT_NE(xref, std::string::npos);
    WriteBytes(PathOf("cut.pdf"), bytes.substr(0, xref));
    context_.TakeWarnings();

    Document document = Document::Open(context_, PathOf("cut.pdf"));
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

TEST_F(OpenTest, EncryptedNoCopyFileGrantsAllOnlyToTheOwner) {
    const std::string path = WritePdf("nocopy.pdf", NoCopyRecipe(EncryptionMethod::kAes128, ""));
    const Document reader = Document::Open(context_, path);
    EXPECT_TRUE(reader.IsEncrypted());
    EXPECT_EQ(reader.Permissions() & (permission::kCopy | permission::kModify), 0u);
    EXPECT_NE(reader.Permissions() & permission::kAnnotate, 0u);
    EXPECT_NE(reader.Permissions() & permission::kPrint, 0u);

    EXPECT_EQ(Document::Open(context_, path, "owner-secret").Permissions(), permission::kAll);
    // A wrong password for a file that opens without one leaves the reader's rights.
    EXPECT_EQ(Document::Open(context_, path, "guess").Permissions(), reader.Permissions());
}

TEST_F(OpenTest, UserPasswordIsRequiredAndChecked) {
    const std::string path =
        WritePdf("locked.pdf", NoCopyRecipe(EncryptionMethod::kRc4_128, "user-pw"));
    EXPECT_THAT(OpenError(context_, path), HasSubstr("password is required"));
    EXPECT_THAT(OpenError(context_, path, "nope"), HasSubstr("wrong password"));

    const Document user = Document::Open(context_, path, "user-pw");
    EXPECT_EQ(user.PageCount(), 1);
    EXPECT_EQ(user.Permissions() & permission::kCopy, 0u);
    EXPECT_EQ(Document::Open(context_, path, "owner-secret").Permissions(), permission::kAll);
}

TEST_F(OpenTest, InfoStringsReadBackByteExact) {
    const std::string utf16_title("\xFE\xFF\x00T\x00\xE9\x00(", 8);
    PdfDescription recipe{.pages = {PageDescription::Blank()}};
    recipe.info = {{"CreationDate", "D:20240102030405+01'00'"},
                   {"ModDate", "D:20240301000000Z"},
                   {"Title", utf16_title},
                   {"Odd Key", "back\\slash (paren"}};
    const std::string path = WritePdf("info.pdf", recipe);
    const Document document = Document::Open(context_, path);
    EXPECT_TRUE(document.HasInfo());
    EXPECT_EQ(document.InfoString("CreationDate"), "D:20240102030405+01'00'");
    EXPECT_EQ(document.InfoString("ModDate"), "D:20240301000000Z");
    EXPECT_EQ(document.InfoString("Title"), utf16_title);
    EXPECT_EQ(document.InfoString("Odd Key"), "back\\slash (paren");
    EXPECT_EQ(document.InfoString("Author"), std::nullopt);
}

TEST_F(OpenTest, InfoIsAbsentUntilSet) {
    Document document = Document::Open(context_, WritePdf("plain.pdf", ThreePages()));
    EXPECT_FALSE(document.HasInfo());
    EXPECT_EQ(document.InfoString("Title"), std::nullopt);

    document.SetInfoString("Title", "Quarterly report");
    EXPECT_TRUE(document.HasInfo());
    EXPECT_EQ(document.InfoString("Title"), "Quarterly report");
    EXPECT_EQ(document.Revision(), 1u);
}

TEST_F(OpenTest, BlankDocumentIsOneLetterPage) {
    const Document document = Document::CreateBlank(context_);
    EXPECT_EQ(document.PageCount(), 1);
    EXPECT_EQ(document.PageBox(0), (Rect{0, 0, 612, 792}));
    EXPECT_TRUE(document.Path().empty());
    EXPECT_TRUE(document.PageObjects(0).empty());
}

TEST_F(OpenTest, PageIndexesAreChecked) {
    const Document document = Document::Open(context_, WritePdf("three.pdf", ThreePages()));
    for (int bad : {-1, 3, 1000}) {
        EXPECT_THROW(document.PageObjects(bad), Error) << bad;
        EXPECT_THROW(document.PageBox(bad), Error) << bad;
        EXPECT_THROW(document.Render(bad, 72), Error) << bad;
    }
    EXPECT_NO_THROW(document.PageBox(2));
}

TEST_F(OpenTest, RenderGivesRgbPixelsOfThePage) {
    PdfDescription recipe{.pages = {PageDescription::Blank(), PageDescription::Blank()}};
    recipe.pages[1].width = 200;
    recipe.pages[1].height = 100;
    recipe.pages[1].Add(PathItem{.rect = {0, 0, 100, 100}, .fill = true});
    const Document document = Document::Open(context_, WritePdf("render.pdf", recipe));
    EXPECT_EQ(document.PageBox(1), (Rect{0, 0, 200, 100}));

    const RgbImage blank = document.Render(0, 36);
    EXPECT_EQ(blank.width, 306);
    EXPECT_EQ(blank.height, 396);
    ASSERT_GE(blank.stride, blank.width * 3);
    EXPECT_EQ(blank.pixels.size(), static_cast<std::size_t>(blank.stride) * blank.height);
    EXPECT_EQ(std::count(blank.pixels.begin(), blank.pixels.end(), 0xFF),
              static_cast<std::ptrdiff_t>(blank.pixels.size()));

    // The filled square covers the left half; its colour is (0.2, 0.4, 0.8).
    const RgbImage half = document.Render(1, 144);
    ASSERT_EQ(half.width, 400);
    ASSERT_EQ(half.height, 200);
    const std::uint8_t* left = &half.pixels[100 * half.stride + 100 * 3];
    const std::uint8_t* right = &half.pixels[100 * half.stride + 300 * 3];
    EXPECT_NEAR(left[0], 51, 2);
    EXPECT_NEAR(left[2], 204, 2);
    EXPECT_EQ(right[0], 0xFF);

    EXPECT_THROW(document.Render(0, 0), Error);
    EXPECT_THROW(document.Render(0, 5000), Error);
}

}  // namespace
}  // namespace pdfhost::engine
