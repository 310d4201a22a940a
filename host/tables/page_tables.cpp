// PDF documents and pages: page count, page dictionaries, the Info dictionary, pages made by the
// plug-in or borrowed from a page view, parsing, and the walk over a page's content objects.
#include "engine/annotation_text_finder.h"
#include "engine/mupdf_call.h"
#include "engine/page_object_number.h"
#include "engine/reading_text.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

// The open document a page was loaded from, or null.
HostDocument* DocumentOfPage(HostApp& app, const PdfPageRecord& page) {
    return page.document != nullptr ? FindDocument(app, page.document) : nullptr;
}

NdxPage PageViewGetPage(HostPageView view) {
    return Guarded<NdxPage>(nullptr, [&](HostApp& app) -> NdxPage {
        const PageViewRecord* record = app.Pages().FindView(view);
        return record != nullptr ? record->page : nullptr;
    });
}

int DocGetPageCount(NdxDoc doc) {
    return Guarded(0, [&](HostApp& app) {
        const HostDocument* document = FindPdf(app, doc);
        return document != nullptr ? document->Engine().PageCount() : 0;
    });
}

NdxObject DocGetPage(NdxDoc doc, int pageIndex) {
    return Guarded<NdxObject>(nullptr, [&](HostApp& app) -> NdxObject {
        HostDocument* document = FindPdf(app, doc);
        if (document == nullptr || pageIndex < 0 || pageIndex >= document->Engine().PageCount()) {
            return nullptr;
        }
        fz_context* ctx = document->Engine().fz();
        const engine::ObjPtr page_obj = document->Engine().PageObject(pageIndex, "page dictionary");
        pdf_obj* page = engine::CallMupdf(ctx, "page dictionary", [&] {
            return pdf_resolve_indirect_chain(ctx, page_obj.get());
        });
        return document->Objects().HandleOf(page);
    });
}

// The dictionary under `key` of the document's trailer, or null when there is none.
NdxObject TrailerDictionary(NdxDoc doc, pdf_obj* key, const char* what) {
    return Guarded<NdxObject>(nullptr, [&](HostApp& app) -> NdxObject {
        HostDocument* document = FindPdf(app, doc);
        if (document == nullptr)
            return nullptr;
        fz_context* ctx = document->Engine().fz();
        pdf_document* pdf = document->Engine().pdf();
        pdf_obj* dict = engine::CallMupdf(ctx, what, [&]() -> pdf_obj* {
            pdf_obj* found =
                pdf_resolve_indirect_chain(ctx, pdf_dict_get(ctx, pdf_trailer(ctx, pdf), key));
            return pdf_is_dict(ctx, found) ? found : nullptr;
        });
        return document->Objects().HandleOf(dict);
    });
}

NdxObject DocGetRoot(NdxDoc doc) {
    return TrailerDictionary(doc, PDF_NAME(Root), "document catalogue");
}

NdxObject DocGetInfo(NdxDoc doc) {
    return TrailerDictionary(doc, PDF_NAME(Info), "Info dictionary");
}

// ---- Pages

NdxPage PageNew() {
    return Guarded<NdxPage>(nullptr, [](HostApp& app) { return app.Pages().NewPage(); });
}

void PageDestroy(NdxPage page) {
    Guarded([&](HostApp& app) { app.Pages().DestroyPage(page); });
}

void PageLoad(NdxPage page, NdxDoc doc, NdxObject pageDict, int) {
    Guarded([&](HostApp& app) {
        HostDocument* document = FindPdf(app, doc);
        if (document == nullptr || app.Pages().FindPage(page) == nullptr)
            return;
        pdf_obj* dict = document->Objects().Find(pageDict);
        if (dict == nullptr)
            return;
        const int index = engine::PageIndexOf(document->Engine(), dict);
        if (index >= 0)
            app.Pages().LoadPage(page, document->Handle(), index);
    });
}

void PageParse(NdxPage page, NdxParseOptions) {
    Guarded([&](HostApp& app) {
        const PdfPageRecord* record = app.Pages().FindPage(page);
        if (record == nullptr)
            return;
        const HostDocument* document = DocumentOfPage(app, *record);
        if (document == nullptr)
            return;
        app.Pages().SetObjects(page, document->Engine().PageObjects(record->index));
    });
}

int PageIsParsed(NdxPage page) {
    return Guarded(0, [&](HostApp& app) {
        const PdfPageRecord* record = app.Pages().FindPage(page);
        return record != nullptr && record->parsed ? 1 : 0;
    });
}

int PageCountObjects(NdxPage page) {
    return Guarded(0, [&](HostApp& app) {
        const PdfPageRecord* record = app.Pages().FindPage(page);
        return record != nullptr ? static_cast<int>(record->types.size()) : 0;
    });
}

// A position is the 1-based index of the next object; null past the end.
NdxPosition PositionOf(std::size_t index, std::size_t count) {
    return index < count ? reinterpret_cast<NdxPosition>(index + 1) : nullptr;
}

NdxPosition PageGetFirstObjectPos(NdxPage page) {
    return Guarded<NdxPosition>(nullptr, [&](HostApp& app) -> NdxPosition {
        const PdfPageRecord* record = app.Pages().FindPage(page);
        return record != nullptr ? PositionOf(0, record->types.size()) : nullptr;
    });
}

NdxPageObject PageGetNextObject(NdxPage page, NdxPosition* position) {
    return Guarded<NdxPageObject>(nullptr, [&](HostApp& app) -> NdxPageObject {
        if (position == nullptr)
            return nullptr;
        const std::vector<NdxPageObject>& objects = app.Pages().ObjectsOf(page);
        const auto index = reinterpret_cast<uintptr_t>(*position);
        if (index == 0 || index > objects.size()) {
            *position = nullptr;
            return nullptr;
        }
        *position = PositionOf(index, objects.size());
        return objects[index - 1];
    });
}

NdxParseOptions ParseOptionsNew(int a, int b, int c, int d) {
    return Guarded<NdxParseOptions>(nullptr, [&](HostApp& app) {
        return app.Values().parseOptions.Emplace(ParseOptionsValue{{a, b, c, d}});
    });
}

void ParseOptionsDestroy(NdxParseOptions options) {
    Guarded([&](HostApp& app) { app.Values().parseOptions.Erase(options); });
}

// The page's text lines in reading order, each as one string, appended to `out`, as a reader reads
// them (see engine::ReadingText: right-to-left text in logical order, a word hyphenated at a line
// end joined, compatibility forms folded); then the lines that its annotations draw (free text,
// stamps), which the field finder searches. The two numbers are the editor's layout tolerances;
// lines come from the page's structured text, which has tolerances of its own.
void PageGetTextLines(HostStringArray out, NdxDoc doc, NdxObject pageDict, int, int) {
    Guarded([&](HostApp& app) {
        StringArrayValue* lines = app.Values().stringArrays.Find(out);
        HostDocument* document = FindPdf(app, doc);
        if (lines == nullptr || document == nullptr)
            return;
        pdf_obj* dict = document->Objects().Find(pageDict);
        if (dict == nullptr)
            return;
        const int index = engine::PageIndexOf(document->Engine(), dict);
        if (index < 0)
            return;
        const std::shared_ptr<const engine::PageText> text =
            document->TextCache().Get(document->Engine(), index);
        auto append = [&](const engine::PageText& read) {
            for (const std::u32string& line :
                 engine::ReadingText::Of(read, engine::Folding::kReading).Lines()) {
                lines->items.emplace_back(line.begin(), line.end());
            }
        };
        append(*text);
        for (const engine::AnnotationText& drawn :
             engine::AnnotationTextsOf(document->Engine(), index)) {
            append(drawn.text);
        }
    });
}

int PageObjectGetType(NdxPageObject object) {
    return Guarded(0, [&](HostApp& app) {
        const PageObjectRecord* record = app.Pages().FindObject(object);
        return record != nullptr ? static_cast<int>(record->type) : 0;
    });
}

}  // namespace

void RegisterPageTables(TableManager& tables) {
    tables.Register<Op::HostPageViewGetPage>(&PageViewGetPage);
    tables.Register<Op::NDXDocGetPageCount>(&DocGetPageCount);
    tables.Register<Op::NDXDocGetPage>(&DocGetPage);
    tables.Register<Op::NDXDocGetRoot>(&DocGetRoot);
    tables.Register<Op::NDXDocGetInfo>(&DocGetInfo);
    tables.Register<Op::NDXPageNew>(&PageNew);
    tables.Register<Op::NDXPageDestroy>(&PageDestroy);
    tables.Register<Op::NDXPageLoad>(&PageLoad);
    tables.Register<Op::NDXPageParse>(&PageParse);
    tables.Register<Op::NDXPageIsParsed>(&PageIsParsed);
    tables.Register<Op::NDXPageCountObjects>(&PageCountObjects);
    tables.Register<Op::NDXPageGetFirstObjectPos>(&PageGetFirstObjectPos);
    tables.Register<Op::NDXPageGetNextObject>(&PageGetNextObject);
    tables.Register<Op::NDXParseOptionsNew>(&ParseOptionsNew);
    tables.Register<Op::NDXParseOptionsDestroy>(&ParseOptionsDestroy);
    tables.Register<Op::NDXPageObjectGetType>(&PageObjectGetType);
    tables.Register<Op::NDXPageGetTextLines>(&PageGetTextLines);
}

}  // namespace pdfhost
