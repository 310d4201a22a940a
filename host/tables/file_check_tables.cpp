// What a plug-in needs to check files before it works on them: a reader that tries to open a
// file, a security handler that asks a document's encryption, and the size text of a file.
#include "file_size_text.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

HostReader ReaderCreate() {
    return Guarded<HostReader>(nullptr, [](HostApp& app) { return app.Readers().Emplace(); });
}

void ReaderDestroy(HostReader reader) {
    Guarded([&](HostApp& app) { app.Readers().Erase(reader); });
}

// 0 when the file can be taken; non-zero when it cannot, or for an unknown reader.
int ReaderOpen(HostReader reader, const wchar_t* path, int) {
    return Guarded(1, [&](HostApp& app) {
        FileReader* found = app.Readers().Find(reader);
        if (found == nullptr || path == nullptr)
            return 1;
        return found->Open(app.Engine(), Utf8Of(path));
    });
}

void ReaderDetach(HostReader reader, int) {
    Guarded([&](HostApp& app) {
        if (FileReader* found = app.Readers().Find(reader))
            found->Detach();
    });
}

HostSecurityHandler SecurityHandlerCreate() {
    return Guarded<HostSecurityHandler>(
        nullptr, [](HostApp& app) { return app.SecurityHandlers().Emplace(); });
}

// 0 when the document's encryption allows changes; non-zero when it refuses them, and for an
// unknown handler or document.
int SecurityHandlerCheck(HostSecurityHandler handler, NdxDoc doc, int) {
    return Guarded(1, [&](HostApp& app) {
        const HostDocument* document = FindPdf(app, doc);
        if (app.SecurityHandlers().Find(handler) == nullptr || document == nullptr)
            return 1;
        return SecurityHandler::Check(document->Engine().Permissions());
    });
}

void SecurityHandlerDestroy(HostSecurityHandler handler) {
    Guarded([&](HostApp& app) { app.SecurityHandlers().Erase(handler); });
}

void FormatFileSize(int64_t bytes, HostWideString out) {
    Guarded([&](HostApp& app) { SetWideUtf8(app, out, FileSizeText(bytes)); });
}

}  // namespace

void RegisterFileCheckTables(TableManager& tables) {
    tables.Register<Op::HostReaderCreate>(&ReaderCreate);
    tables.Register<Op::HostReaderDestroy>(&ReaderDestroy);
    tables.Register<Op::HostReaderOpen>(&ReaderOpen);
    tables.Register<Op::HostReaderDetach>(&ReaderDetach);
    tables.Register<Op::HostSecurityHandlerCreate>(&SecurityHandlerCreate);
    tables.Register<Op::HostSecurityHandlerCheck>(&SecurityHandlerCheck);
    tables.Register<Op::HostSecurityHandlerDestroy>(&SecurityHandlerDestroy);
    tables.Register<Op::HostFormatFileSize>(&FormatFileSize);
}

}  // namespace pdfhost
