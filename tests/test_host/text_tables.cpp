// Text pages and the text finder over the engine's page text.
#include "engine_tables.h"

namespace testhost {
namespace {

using hostops::Op;

// The match the finder stands on, or null before the first and after the last.
const TextMatch* CurrentMatch(MemoryEngine& e, NdxTextFind find) {
    const TextFinder* finder = e.finders.Find(find);
    if (finder == nullptr || finder->position < 0 ||
        static_cast<std::size_t>(finder->position) >= finder->matches.size()) {
        return nullptr;
    }
    return &finder->matches[static_cast<std::size_t>(finder->position)];
}

void RegisterTextPages(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXTextPageNew>([](NdxPage page, int) {
        return Serve<NdxTextPage>(nullptr, [&](MemoryEngine& e) -> NdxTextPage {
            if (e.PageOf(page) == nullptr)
                return nullptr;
            return e.textPages.Emplace(TextPage{Same<HostPageView>(page), false});
        });
    });
    tables.Register<Op::NDXTextPageDestroy>(
        [](NdxTextPage textPage) { Serve([&](MemoryEngine& e) { e.textPages.Erase(textPage); }); });
    tables.Register<Op::NDXTextPageParse>([](NdxTextPage textPage) {
        Serve([&](MemoryEngine& e) {
            if (TextPage* found = e.textPages.Find(textPage))
                found->parsed = true;
        });
    });
    tables.Register<Op::NDXTextPageIsParsed>([](NdxTextPage textPage) {
        return Serve(0, [&](MemoryEngine& e) {
            const TextPage* found = e.textPages.Find(textPage);
            return found != nullptr && found->parsed ? 1 : 0;
        });
    });
}

void RegisterFinder(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXTextFindNew>([](NdxTextPage textPage) {
        return Serve<NdxTextFind>(nullptr, [&](MemoryEngine& e) -> NdxTextFind {
            const TextPage* found = e.textPages.Find(textPage);
            if (found == nullptr || !found->parsed)
                return nullptr;
            return e.finders.Emplace(TextFinder{found->page, {}, -1});
        });
    });
    tables.Register<Op::NDXTextFindDestroy>(
        [](NdxTextFind find) { Serve([&](MemoryEngine& e) { e.finders.Erase(find); }); });
    tables.Register<Op::NDXTextFindStart>(
        [](NdxTextFind find, const wchar_t* text, uint32_t flags, int) {
            return Serve(0, [&](MemoryEngine& e) {
                TextFinder* finder = e.finders.Find(find);
                const Page* page = finder != nullptr ? e.PageOf(finder->page) : nullptr;
                const std::wstring wanted = TextOf(text);
                if (page == nullptr || wanted.empty())
                    return 0;
                finder->matches = e.Find(*page, wanted, flags);
                finder->position = -1;
                return 1;
            });
        });
    tables.Register<Op::NDXTextFindNext>([](NdxTextFind find) {
        return Serve(0, [&](MemoryEngine& e) {
            TextFinder* finder = e.finders.Find(find);
            if (finder == nullptr)
                return 0;
            const int count = static_cast<int>(finder->matches.size());
            if (finder->position < count)
                ++finder->position;
            return finder->position < count ? 1 : 0;
        });
    });
    tables.Register<Op::NDXTextFindGetRects>([](NdxTextFind find, NdxRectArray rects) {
        Serve([&](MemoryEngine& e) {
            const TextMatch* match = CurrentMatch(e, find);
            auto* out = e.rectArrays.Find(rects);
            if (out != nullptr)
                *out = match != nullptr ? match->rects : std::vector<NdxRect>();
        });
    });
    tables.Register<Op::NDXTextFindGetCharIndex>([](NdxTextFind find) {
        return Serve(-1, [&](MemoryEngine& e) {
            const TextMatch* match = CurrentMatch(e, find);
            return match != nullptr ? match->start : -1;
        });
    });
    tables.Register<Op::NDXTextFindGetCharCount>([](NdxTextFind find) {
        return Serve(0, [&](MemoryEngine& e) {
            const TextMatch* match = CurrentMatch(e, find);
            return match != nullptr ? match->count : 0;
        });
    });
}

}  // namespace

void RegisterTextTables(pdfhost::TableManager& tables) {
    RegisterTextPages(tables);
    RegisterFinder(tables);
}

}  // namespace testhost
