// Flattening a document's form into its pages, and writing a PDF document to a file.
#include <filesystem>
#include <iostream>

#include "engine/flattener.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

NdxFlattener FlattenerNew(NdxDoc doc) {
    return Guarded<NdxFlattener>(nullptr, [&](HostApp& app) -> NdxFlattener {
        if (FindPdf(app, doc) == nullptr)
            return nullptr;
        return app.Values().flatteners.Emplace(FlattenerValue{doc});
    });
}

// Bakes the widgets of one page of the flattener's document into the page.
void FlattenerAddPage(NdxFlattener flattener, NdxPage page, int, int) {
    Guarded([&](HostApp& app) {
        const FlattenerValue* value = app.Values().flatteners.Find(flattener);
        const PdfPageRecord* record = app.Pages().FindPage(page);
        if (value == nullptr || record == nullptr)
            return;
        HostDocument* document = FindPdf(app, value->document);
        if (document == nullptr || document->Handle() != record->document)
            return;
        engine::FlattenPageWidgets(document->Engine(), record->index);
        app.MarkModified(*document);
    });
}

// Ends the flattening: a form without widgets left goes from the document.
void FlattenerDone(NdxFlattener flattener) {
    Guarded([&](HostApp& app) {
        const FlattenerValue* value = app.Values().flatteners.Find(flattener);
        if (value == nullptr)
            return;
        if (HostDocument* document = FindPdf(app, value->document)) {
            if (engine::DropEmptyForm(document->Engine()))
                app.MarkModified(*document);
        }
        app.Values().flatteners.Erase(flattener);
    });
}

// Writes the whole document, unused objects removed, to the file. The document keeps its own
// path; written over its own file it counts as saved.
void DocSaveToFile(NdxDoc doc, const char* utf8Path, int, int) {
    Guarded([&](HostApp& app) {
        HostDocument* document = FindPdf(app, doc);
        if (document == nullptr || utf8Path == nullptr || *utf8Path == 0)
            return;
        try {
            document->Engine().WriteCopy(utf8Path);
        } catch (const std::exception& error) {
            std::cerr << "pdfhost: " << error.what() << '\n';
            return;
        }
        const std::filesystem::path written =
            std::filesystem::absolute(utf8Path).lexically_normal();
        if (!document->Path().empty() && written == std::filesystem::path(document->Path()))
            document->SetModified(false);
    });
}

}  // namespace

void RegisterFlattenerTables(TableManager& tables) {
    tables.Register<Op::NDXFlattenerNew>(&FlattenerNew);
    tables.Register<Op::NDXFlattenerAddPage>(&FlattenerAddPage);
    tables.Register<Op::NDXFlattenerDone>(&FlattenerDone);
    tables.Register<Op::NDXDocSaveToFile>(&DocSaveToFile);
}

}  // namespace pdfhost
