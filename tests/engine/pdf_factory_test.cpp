#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/document.h"
#include "engine/error.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::EngineTest;
using testing_support::RunCommand;

using PdfFactoryTest = EngineTest;

TEST_F(PdfFactoryTest, TextIsReadableByAnIndependentReader) {
    PdfDescription recipe{
        .pages = {PageDescription::TextLines(
                      {"Name: Zo\xC3\xAB M\xC3\xBCller", "Mail: zoe (at) example.com \\ office"}),
                  PageDescription::Blank().Add(TextItem{.x = 300, .y = 100, .text = "p2"})}};
    const std::string path = WritePdf("text.pdf", recipe);

    const std::string text = RunCommand("pdftotext -layout '" + path + "' -");
    EXPECT_THAT(text, HasSubstr("Name: Zo\xC3\xAB M\xC3\xBCller"));
    EXPECT_THAT(text, HasSubstr("Mail: zoe (at) example.com \\ office"));
    EXPECT_THAT(RunCommand("pdftotext -f 2 -l 2 '" + path + "' -"), HasSubstr("p2"));
    EXPECT_THAT(RunCommand("pdfimages -list '" + path + "'"), Not(HasSubstr("image")));
}

TEST_F(PdfFactoryTest, ImagePagesHoldTheGeneratedPicture) {
    PdfDescription recipe{
        .pages = {PageDescription::Blank().Add(
            ImageItem{.placement = {0, 0, 100, 50}, .pixel_width = 30, .pixel_height = 20})}};
    const std::string listing =
        RunCommand("pdfimages -list '" + WritePdf("image.pdf", recipe) + "'");
    EXPECT_THAT(listing, ::testing::ContainsRegex("image +30 +20 +rgb"));
}

TEST_F(PdfFactoryTest, BuildKeepsPageSizesAndRejectsBadSpecs) {
    PdfDescription recipe{.pages = {PageDescription::Blank(), PageDescription::Blank()}};
    recipe.pages[1].width = 842;
    recipe.pages[1].height = 595;
    const Document document = factory_.Build(recipe);
    EXPECT_EQ(document.PageCount(), 2);
    EXPECT_EQ(document.PageBox(1), (Rect{0, 0, 842, 595}));
    EXPECT_TRUE(document.Path().empty());

    EXPECT_THROW(factory_.Build(PdfDescription{}), Error);
    EXPECT_THROW(factory_.Build(
                     PdfDescription{.pages = {PageDescription().Add(ImageItem{.pixel_width = 0})}}),
                 Error);
    PdfDescription long_password{.pages = {PageDescription::Blank()}};
    long_password.encryption = Encryption{.owner_password = std::string(200, 'x')};
    EXPECT_THROW(factory_.Write(long_password, PathOf("never.pdf")), Error);
    EXPECT_FALSE(std::filesystem::exists(PathOf("never.pdf")));
}

}  // namespace
}  // namespace pdfhost::engine
