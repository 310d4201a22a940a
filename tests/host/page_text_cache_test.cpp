// The page text cache keeps a bounded number of the pages read last, and pages of a long
// document are found where they are through the engine's page index.
#include <gtest/gtest.h>

#include <string>

#include "engine/annotations.h"
#include "engine/context.h"
#include "engine/pdf_factory.h"
#include "engine/pdf_value.h"
#include "page_text_cache.h"

namespace pdfhost {
namespace {

engine::Document NumberedPages(engine::Context& context, int pages) {
    engine::PdfDescription description;
    for (int page = 0; page < pages; ++page) {
        engine::PageDescription content;
        content.Add(engine::TextItem{72, 720, 12, "Page " + std::to_string(page)});
        description.pages.push_back(std::move(content));
    }
    return engine::PdfFactory(context).Build(description);
}

std::string TextOf(const engine::PageText& text) {
    std::string out;
    for (const engine::TextChar& c : text.Chars()) {
        if (c.code < 0x80)
            out.push_back(static_cast<char>(c.code));
    }
    return out;
}

TEST(PageTextCacheTest, KeepsTheRecentPagesUpToItsBound) {
    engine::Context context;
    constexpr int kPages = static_cast<int>(PageTextCache::kMaxPages) + 8;
    engine::Document document = NumberedPages(context, kPages);
    PageTextCache cache;
    const auto first = cache.Get(document, 0);
    for (int page = 1; page < kPages; ++page)
        cache.Get(document, page);
    EXPECT_EQ(cache.Size(), PageTextCache::kMaxPages);

    const auto last = cache.Get(document, kPages - 1);
    EXPECT_EQ(cache.Get(document, kPages - 1), last);  // kept: the same text, not read again
    const auto again = cache.Get(document, 0);         // dropped long ago: read anew
    EXPECT_NE(again, first);
    EXPECT_EQ(TextOf(*again), TextOf(*first));
    EXPECT_EQ(cache.Size(), PageTextCache::kMaxPages);

    // A page read again moves to the front: reading the bound's worth of other pages after it
    // still leaves it kept.
    const auto touched = cache.Get(document, kPages - 2);
    for (int page = 1; page + 1 < static_cast<int>(PageTextCache::kMaxPages); ++page)
        cache.Get(document, page);
    EXPECT_EQ(cache.Get(document, kPages - 2), touched);
}

TEST(PageIndexTest, TextAndAnnotationsOfALongDocumentLandOnTheirOwnPage) {
    engine::Context context;
    constexpr int kPages = 300;
    engine::Document document = NumberedPages(context, kPages);
    engine::Annotations annotations(document);
    for (const int page : {0, 1, 149, 298, 299}) {
        SCOPED_TRACE(page);
        EXPECT_EQ(TextOf(engine::PageText::OfPage(document, page)), "Page " + std::to_string(page));
        engine::PdfValue entries = engine::PdfValue::Dictionary();
        entries.Set("Subtype", engine::PdfValue::Name("Square"));
        engine::PdfValue rect = engine::PdfValue::Array();
        for (const int v : {10, 10, 50, 50})
            rect.Push(engine::PdfValue::Integer(v));
        entries.Set("Rect", std::move(rect));
        const engine::AnnotationId id = annotations.Create(page, entries, 0, -1);
        EXPECT_EQ(id.page, page);
        EXPECT_TRUE(annotations.IsOnPage(id));
        EXPECT_EQ(annotations.OnPage(page), std::vector<int>{id.object});
        const int neighbour = page == 0 ? 2 : page - 1;
        EXPECT_FALSE(annotations.IsOnPage(engine::AnnotationId{neighbour, id.object}));
    }
}

}  // namespace
}  // namespace pdfhost
