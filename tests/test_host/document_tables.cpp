// Documents, their views and pages, and the text select tool. A document's HostDoc, NdxDoc,
// HostDocView and HostTextSelectTool are one handle value; so are a page's HostPageView, NdxPage
// and NdxAnnotList.
#include <algorithm>

#include "engine_tables.h"

namespace testhost {
namespace {

using hostops::Op;

constexpr uint32_t kAllPermissions =
    kHostPermPrint | kHostPermModify | kHostPermCopy | kHostPermAnnotate;
constexpr NdxRect kVisibleArea{0, 0, 612, 792};

// The view of page `index`, or null.
HostPageView PageView(MemoryEngine& e, const void* doc, int index) {
    Document* document = e.DocumentOf(doc);
    if (document == nullptr || index < 0 ||
        static_cast<std::size_t>(index) >= document->pages.size())
        return nullptr;
    return document->pages[static_cast<std::size_t>(index)].view;
}

void RegisterDocumentFacts(pdfhost::TableManager& tables) {
    tables.Register<Op::HostDocGetPdfDoc>([](HostDoc doc) {
        return Serve<NdxDoc>(nullptr, [&](MemoryEngine& e) {
            return e.DocumentOf(doc) != nullptr ? Same<NdxDoc>(doc) : nullptr;
        });
    });
    tables.Register<Op::HostDocGetView>([](HostDoc doc) {
        return Serve<HostDocView>(nullptr, [&](MemoryEngine& e) {
            return e.DocumentOf(doc) != nullptr ? Same<HostDocView>(doc) : nullptr;
        });
    });
    tables.Register<Op::HostDocGetTextSelectTool>([](HostDoc doc) {
        return Serve<HostTextSelectTool>(nullptr, [&](MemoryEngine& e) {
            return e.DocumentOf(doc) != nullptr ? Same<HostTextSelectTool>(doc) : nullptr;
        });
    });
    tables.Register<Op::HostDocGetFilePath>([](HostDoc doc, HostWideString out) {
        Serve([&](MemoryEngine& e) {
            const Document* document = e.DocumentOf(doc);
            SetWide(e, out, document != nullptr ? document->path : std::wstring());
        });
    });
    tables.Register<Op::HostDocIsTemporary>([](HostDoc) { return 0; });
    tables.Register<Op::HostDocGetPermissions>([](HostDoc doc) {
        return Serve(0u, [&](MemoryEngine& e) {
            return e.DocumentOf(doc) != nullptr ? kAllPermissions : 0u;
        });
    });
    tables.Register<Op::HostDocIsModified>([](HostDoc doc) {
        return Serve(0, [&](MemoryEngine& e) {
            const Document* document = e.DocumentOf(doc);
            return document != nullptr && document->modified ? 1 : 0;
        });
    });
    tables.Register<Op::HostDocSetChanged>(
        [](HostDoc doc) { Serve([&](MemoryEngine& e) { e.SetModified(doc); }); });
}

void RegisterViews(pdfhost::TableManager& tables) {
    tables.Register<Op::HostDocGetPageView>([](HostDoc doc, int index) {
        return Serve<HostPageView>(nullptr,
                                   [&](MemoryEngine& e) { return PageView(e, doc, index); });
    });
    tables.Register<Op::HostDocViewGetPageView>([](HostDocView view, int index) {
        return Serve<HostPageView>(nullptr,
                                   [&](MemoryEngine& e) { return PageView(e, view, index); });
    });
    tables.Register<Op::HostDocViewGetCurrentPageView>([](HostDocView view) {
        return Serve<HostPageView>(nullptr, [&](MemoryEngine& e) -> HostPageView {
            const Document* document = e.DocumentOf(view);
            return document != nullptr ? PageView(e, view, document->currentPage) : nullptr;
        });
    });
    tables.Register<Op::HostDocViewGotoPage>([](HostDocView view, int index) {
        Serve([&](MemoryEngine& e) {
            Document* document = e.DocumentOf(view);
            if (document != nullptr && PageView(e, view, index) != nullptr)
                document->currentPage = index;
        });
    });
    tables.Register<Op::HostPageViewGetVisibleRect>([](HostPageView page) {
        return Serve(NdxRect{0, 0, 0, 0}, [&](MemoryEngine& e) {
            return e.PageOf(page) != nullptr ? kVisibleArea : NdxRect{0, 0, 0, 0};
        });
    });
    tables.Register<Op::HostPageViewGetPage>([](HostPageView page) {
        return Serve<NdxPage>(nullptr, [&](MemoryEngine& e) {
            return e.PageOf(page) != nullptr ? Same<NdxPage>(page) : nullptr;
        });
    });
}

void RegisterPageAnnots(pdfhost::TableManager& tables) {
    tables.Register<Op::HostPageViewCountAnnots>([](HostPageView page) {
        return Serve(0, [&](MemoryEngine& e) {
            const Page* found = e.PageOf(page);
            return found != nullptr ? static_cast<int>(found->annots.size()) : 0;
        });
    });
    tables.Register<Op::HostPageViewGetAnnot>([](HostPageView page, int index) {
        return Serve<HostAnnot>(nullptr, [&](MemoryEngine& e) -> HostAnnot {
            const Page* found = e.PageOf(page);
            if (found == nullptr || index < 0 ||
                static_cast<std::size_t>(index) >= found->annots.size())
                return nullptr;
            return found->annots[static_cast<std::size_t>(index)];
        });
    });
    tables.Register<Op::HostPageViewAddAnnot>([](HostPageView page, NdxObject dict, int) {
        return Serve<HostAnnot>(nullptr, [&](MemoryEngine& e) { return e.AddAnnot(page, dict); });
    });
    tables.Register<Op::HostPageViewDeleteAnnot>([](HostPageView page, HostAnnot annot) {
        return Serve(0, [&](MemoryEngine& e) { return e.DeleteAnnot(page, annot) ? 1 : 0; });
    });
    tables.Register<Op::HostPageViewOwnsAnnot>([](HostPageView page, HostAnnot annot) {
        return Serve(0, [&](MemoryEngine& e) {
            const Page* found = e.PageOf(page);
            return found != nullptr && std::find(found->annots.begin(), found->annots.end(),
                                                 annot) != found->annots.end()
                       ? 1
                       : 0;
        });
    });
    tables.Register<Op::HostDocIsAnnotAlive>([](HostDoc doc, HostAnnot annot) {
        return Serve(0, [&](MemoryEngine& e) {
            const Annotation* found = e.AnnotOf(annot);
            return found != nullptr && found->doc == doc ? 1 : 0;
        });
    });
}

void RegisterSelection(pdfhost::TableManager& tables) {
    tables.Register<Op::HostTextSelectToolClear>([](HostTextSelectTool tool) {
        Serve([&](MemoryEngine& e) {
            if (Document* document = e.DocumentOf(tool)) {
                document->selectedPage = -1;
                document->selection.clear();
            }
        });
    });
    tables.Register<Op::HostTextSelectToolSelectRects>([](HostTextSelectTool tool,
                                                          HostPageView page, NdxRectArray rects) {
        Serve([&](MemoryEngine& e) {
            Document* document = e.DocumentOf(tool);
            const std::optional<MemoryEngine::PageRef> ref = e.PageRefOf(page);
            const auto* list = e.rectArrays.Find(rects);
            if (document == nullptr || !ref || ref->doc != Same<HostDoc>(tool) || list == nullptr)
                return;
            document->selectedPage = ref->index;
            document->selection = *list;
        });
    });
}

void RegisterPdfPages(pdfhost::TableManager& tables) {
    tables.Register<Op::NDXDocGetPageCount>([](NdxDoc doc) {
        return Serve(0, [&](MemoryEngine& e) {
            const Document* document = e.DocumentOf(doc);
            return document != nullptr ? static_cast<int>(document->pages.size()) : 0;
        });
    });
    tables.Register<Op::NDXDocGetPage>([](NdxDoc doc, int index) {
        return Serve<NdxObject>(nullptr, [&](MemoryEngine& e) -> NdxObject {
            const Page* page = e.PageOf(PageView(e, doc, index));
            return page != nullptr ? page->dict : nullptr;
        });
    });
    tables.Register<Op::NDXDocGetInfo>([](NdxDoc doc) {
        return Serve<NdxObject>(nullptr, [&](MemoryEngine& e) -> NdxObject {
            const Document* document = e.DocumentOf(doc);
            return document != nullptr ? document->info : nullptr;
        });
    });
    tables.Register<Op::NDXPageIsParsed>([](NdxPage page) {
        return Serve(0, [&](MemoryEngine& e) {
            const Page* found = e.PageOf(page);
            return found != nullptr && found->parsed ? 1 : 0;
        });
    });
    tables.Register<Op::NDXPageParse>([](NdxPage page, NdxParseOptions) {
        Serve([&](MemoryEngine& e) {
            if (Page* found = e.PageOf(page))
                found->parsed = true;
        });
    });
    tables.Register<Op::NDXParseOptionsNew>([](int, int, int, int) {
        return Serve<NdxParseOptions>(nullptr,
                                      [](MemoryEngine& e) { return e.parseOptions.Emplace(0); });
    });
    tables.Register<Op::NDXParseOptionsDestroy>([](NdxParseOptions options) {
        Serve([&](MemoryEngine& e) { e.parseOptions.Erase(options); });
    });
}

}  // namespace

void RegisterDocumentTables(pdfhost::TableManager& tables) {
    RegisterDocumentFacts(tables);
    RegisterViews(tables);
    RegisterPageAnnots(tables);
    RegisterSelection(tables);
    RegisterPdfPages(tables);
}

}  // namespace testhost
