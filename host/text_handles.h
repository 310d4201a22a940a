// Text pages, text finders and field finders that plug-ins make and destroy. Each remembers the
// document and page it was made for and holds plain data only, so it outlives its document
// harmlessly: every operation on it first checks that the document is still open.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/geometry.h"
#include "engine/text_finder.h"
#include "engine/text_page.h"
#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

struct TextPageRecord {
    HostDoc document = nullptr;
    int page = -1;
    std::shared_ptr<const engine::PageText> text;  // null until parsed
};

struct TextFindRecord {
    HostDoc document = nullptr;
    int page = -1;
    std::shared_ptr<const engine::PageText> text;
    std::vector<engine::TextMatch> matches;
    int current = -1;  // the match Next reached; -1 before the first
    // The text as the last search read it, kept for the next needle folded alike.
    std::shared_ptr<const engine::ReadingText> reading{};
    engine::Folding readingFolding = engine::Folding::kCaseless;
};

struct FieldFindRecord {
    HostDoc document = nullptr;
    int page = -1;
    std::vector<std::vector<engine::Rect>> matches;  // the rectangles of each match
    int current = -1;
};

// The needle of the last search started, with its flags and compiled pattern. A search runs
// over many pages with one needle: it is converted and compiled once, and every page that
// remembers it shares this one copy.
struct SearchNeedle {
    std::shared_ptr<const std::u32string> text = std::make_shared<const std::u32string>();
    std::uint32_t flags = 0;
    std::optional<engine::TextPattern> pattern;  // nullopt: nothing to find
};

struct TextHandles {
    SearchNeedle lastNeedle;
    HandlePool<NdxTextPage, TextPageRecord> pages;
    HandlePool<NdxTextFind, TextFindRecord> finders;
    HandlePool<NdxFieldFind, FieldFindRecord> fieldFinders;
};

}  // namespace pdfhost
