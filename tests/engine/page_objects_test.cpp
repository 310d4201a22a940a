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
    const Document document = Document::Open(context_, WritePdf("pages.pdf", recipe));
    for (std::size_t i = 0; i < pages.size(); ++i)
        EXPECT_EQ(document.PageObjects(static_cast<int>(i)), pages[i].second) << i;
}

}  // namespace
}  // namespace pdfhost::engine
