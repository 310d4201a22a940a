#include <gtest/gtest.h>

#include "engine/document.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;
using Types = std::vector<PageObjectType>;
constexpr auto kText = PageObjectType::kText;
constexpr auto kPath = PageObjectType::kPath;
constexpr auto kImage = PageObjectType::kImage;
constexpr auto kShading = PageObjectType::kShading;
constexpr auto kForm = PageObjectType::kForm;

class PageObjectsTest : public EngineTest {
  protected:
    Types ObjectsOf(const PageDescription& page) {
        const Document document =
            Document::Open(context_, WritePdf("page.pdf", PdfDescription{.pages = {page}}));
        return document.PageObjects(0);
    }
};

TEST_F(PageObjectsTest, SingleKindPages) {
    EXPECT_EQ(ObjectsOf(PageDescription::Blank()), Types{});
    EXPECT_EQ(ObjectsOf(PageDescription::TextLines({"one", "two", "three"})),
              (Types{kText, kText, kText}));
    EXPECT_EQ(ObjectsOf(PageDescription::ImageOnly()), Types{kImage});
    EXPECT_EQ(ObjectsOf(PageDescription::PathsOnly()), (Types{kPath, kPath}));
    EXPECT_EQ(ObjectsOf(PageDescription().Add(ShadingItem{})), Types{kShading});
}

// The form's own content (a frame and a line of text) is not listed.
TEST_F(PageObjectsTest, FormXObjectCountsOnce) {
    EXPECT_EQ(ObjectsOf(PageDescription::FormOnly("inside the form")), Types{kForm});
}

TEST_F(PageObjectsTest, MixedPageKeepsContentOrder) {
    PageDescription page;
    page.Add(TextItem{.text = "heading"})
        .Add(ImageItem{})
        .Add(PathItem{})
        .Add(FormItem{})
        .Add(ShadingItem{})
        .Add(TextItem{.y = 100, .text = "footer"})
        .Add(ImageItem{.placement = {300, 72, 400, 172}, .seed = 3});
    EXPECT_EQ(ObjectsOf(page), (Types{kText, kImage, kPath, kForm, kShading, kText, kImage}));
}

TEST_F(PageObjectsTest, PagesOfOneDocumentAreListedSeparately) {
    const PdfDescription recipe{.pages = {PageDescription::TextLines({"a"}),
                                          PageDescription::ImageOnly(), PageDescription::FormOnly(),
                                          PageDescription::Blank()}};
    const Document document = Document::Open(context_, WritePdf("four.pdf", recipe));
    EXPECT_EQ(document.PageObjects(0), Types{kText});
    EXPECT_EQ(document.PageObjects(1), Types{kImage});
    EXPECT_EQ(document.PageObjects(2), Types{kForm});
    EXPECT_EQ(document.PageObjects(3), Types{});
}

}  // namespace
}  // namespace pdfhost::engine
