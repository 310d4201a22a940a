// Host documents: opening (in a tab or hidden), closing, saving, the modified flag, permissions,
// paths, and the page views of a document.
#include <QMainWindow>
#include <iostream>

#include "close_prompt.h"
#include "reported_permissions.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

HostDoc DocOpen(const wchar_t* path, const wchar_t* password, int visible, int) {
    return Guarded<HostDoc>(nullptr, [&](HostApp& app) -> HostDoc {
        if (path == nullptr)
            return nullptr;
        const HostApp::OpenResult opened =
            visible != 0 ? app.OpenDocument(Utf8Of(path), Utf8Of(password))
                         : app.OpenHidden(Utf8Of(path), Utf8Of(password), false);
        if (opened.document == nullptr) {
            std::cerr << "pdfhost: " << opened.error << '\n';
            return nullptr;
        }
        return opened.document->Handle();
    });
}

HostDoc DocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions* options) {
    return Guarded<HostDoc>(nullptr, [&](HostApp& app) -> HostDoc {
        if (path == nullptr)
            return nullptr;
        const std::string password = options != nullptr ? Utf8Of(options->password) : "";
        const bool quiet = options != nullptr && options->quiet != 0;
        const HostApp::OpenResult opened = app.OpenHidden(Utf8Of(path), password, quiet);
        if (opened.document == nullptr) {
            std::cerr << "pdfhost: " << opened.error << '\n';
            return nullptr;
        }
        return opened.document->Handle();
    });
}

// With `keepOpenCheck`, a document with unsaved changes asks first and may stay open.
void DocClose(HostDoc doc, int keepOpenCheck, int, int) {
    Guarded([&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        if (document == nullptr)
            return;
        if (keepOpenCheck != 0) {
            const int number = document->Number();
            if (!ConfirmClose(app, *document, app.MainWindow(), !app.Options().headless))
                return;
            document = app.Documents().FindByNumber(number);
            if (document == nullptr)
                return;
        }
        app.CloseDocument(*document);
    });
}

NdxDoc DocGetPdfDoc(HostDoc doc) {
    return Guarded<NdxDoc>(nullptr, [&](HostApp& app) -> NdxDoc {
        const HostDocument* document = FindDocument(app, doc);
        return document != nullptr ? document->PdfHandle() : nullptr;
    });
}

void DocSetChanged(HostDoc doc) {
    Guarded([&](HostApp& app) {
        if (HostDocument* document = FindDocument(app, doc))
            app.MarkModified(*document);
    });
}

int DocIsModified(HostDoc doc) {
    return Guarded(0, [&](HostApp& app) {
        const HostDocument* document = FindDocument(app, doc);
        return document != nullptr && document->IsModified() ? 1 : 0;
    });
}

uint32_t DocGetPermissions(HostDoc doc) {
    return Guarded<uint32_t>(0, [&](HostApp& app) -> uint32_t {
        const HostDocument* document = FindDocument(app, doc);
        return document != nullptr ? ReportedPermissions(document->Engine().Permissions()) : 0;
    });
}

// Nonzero when every bit asked for is granted.
int DocGetPermission(HostDoc doc, uint32_t bit) {
    return Guarded(0, [&](HostApp& app) {
        const HostDocument* document = FindDocument(app, doc);
        if (document == nullptr || bit == 0)
            return 0;
        return (ReportedPermissions(document->Engine().Permissions()) & bit) == bit ? 1 : 0;
    });
}

void DocGetFilePath(HostDoc doc, HostWideString out) {
    Guarded([&](HostApp& app) {
        const HostDocument* document = FindDocument(app, doc);
        SetWideUtf8(app, out, document != nullptr ? document->Path() : std::string());
    });
}

void DocGetFileName(HostDoc doc, HostWideString out) {
    Guarded([&](HostApp& app) {
        const HostDocument* document = FindDocument(app, doc);
        SetWideUtf8(app, out, document != nullptr ? document->FileName() : std::string());
    });
}

int DocIsTemporary(HostDoc doc) {
    return Guarded(0, [&](HostApp& app) {
        const HostDocument* document = FindDocument(app, doc);
        return document != nullptr && document->IsTemporary() ? 1 : 0;
    });
}

// Saves in place, in full; nonzero on success.
int DocSave(HostDoc doc, int, int, int, int) {
    return Guarded(0, [&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        return document != nullptr ? app.SaveDocument(*document) : 0;
    });
}

// Saves in full under a new path, which the document then belongs to; nonzero on success. The
// options ask for a full save, which every save of this host is.
int DocSaveAs(HostDoc doc, const wchar_t* path, int, int, const HostSaveAsOptions*) {
    return Guarded(0, [&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        if (document == nullptr || path == nullptr || *path == 0)
            return 0;
        return app.SaveDocumentAs(*document, Utf8Of(path));
    });
}

int DocGetPageCount(HostDoc doc) {
    return Guarded(0, [&](HostApp& app) {
        const HostDocument* document = FindDocument(app, doc);
        return document != nullptr ? document->Engine().PageCount() : 0;
    });
}

// One view per page, also for hidden documents; null outside the pages.
HostPageView DocGetPageView(HostDoc doc, int pageIndex) {
    return Guarded<HostPageView>(nullptr, [&](HostApp& app) -> HostPageView {
        const HostDocument* document = FindDocument(app, doc);
        if (document == nullptr || pageIndex < 0 || pageIndex >= document->Engine().PageCount()) {
            return nullptr;
        }
        return app.Pages().ViewOf(doc, pageIndex);
    });
}

}  // namespace

void RegisterDocumentTables(TableManager& tables) {
    tables.Register<Op::HostDocOpen>(&DocOpen);
    tables.Register<Op::HostDocOpenHidden>(&DocOpenHidden);
    tables.Register<Op::HostDocClose>(&DocClose);
    tables.Register<Op::HostDocGetPdfDoc>(&DocGetPdfDoc);
    tables.Register<Op::HostDocSetChanged>(&DocSetChanged);
    tables.Register<Op::HostDocIsModified>(&DocIsModified);
    tables.Register<Op::HostDocGetPermissions>(&DocGetPermissions);
    tables.Register<Op::HostDocGetPermission>(&DocGetPermission);
    tables.Register<Op::HostDocGetFilePath>(&DocGetFilePath);
    tables.Register<Op::HostDocGetFileName>(&DocGetFileName);
    tables.Register<Op::HostDocIsTemporary>(&DocIsTemporary);
    tables.Register<Op::HostDocSave>(&DocSave);
    tables.Register<Op::HostDocSaveAs>(&DocSaveAs);
    tables.Register<Op::HostDocGetPageCount>(&DocGetPageCount);
    tables.Register<Op::HostDocGetPageView>(&DocGetPageView);
}

}  // namespace pdfhost
