// The "OCRRecognition extension HFT" table: recognising the text of scanned pages, and its
// options dialog.
#include <iostream>

#include "engine/ocr_layer.h"
#include "ocr_dialog.h"
#include "parent_window.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::ExtOp;

// Adds the recognised words of the page as invisible text; 1 on success. A page that has text
// already (typed, or recognised before) is left as it is, so that its words are not doubled. The
// options' language and flag change nothing: recognition reads English.
int OcrRecognizePage(NdxPage page, HostOcrOptions*, int) {
    return Guarded(0, [&](HostApp& app) {
        const PdfPageRecord* record = app.Pages().FindPage(page);
        if (record == nullptr)
            return 0;
        HostDocument* document = FindDocument(app, record->document);
        if (document == nullptr)
            return 0;
        try {
            if (document->TextCache().Get(document->Engine(), record->index)->CharCount() > 0)
                return 1;
            engine::AddOcrTextLayer(document->Engine(), record->index, app.Ocr());
        } catch (const std::exception& error) {
            std::cerr << "pdfhost: " << error.what() << '\n';
            return 0;
        }
        app.MarkModified(*document);
        return 1;
    });
}

// Shows the options; on OK the callback gets the language and the options' flag. 1 when
// confirmed.
int OcrShowDialog(HostWindow parent, HostOcrOptions* options, HostOcrDialogCallback* callback) {
    return Guarded(0, [&](HostApp& app) {
        const std::wstring offered =
            options != nullptr && options->language != nullptr ? options->language : L"";
        const wchar_t* language = AskOcrLanguage(app, ParentWindowOf(app, parent), offered);
        if (language == nullptr)
            return 0;
        if (callback != nullptr && callback->confirmed != nullptr) {
            callback->confirmed(callback->client, language,
                                options != nullptr ? options->optionFlag : uint8_t{1});
        }
        return 1;
    });
}

}  // namespace

void RegisterOcrExtension(ExtensionRegistry& extensions) {
    extensions.Register<ExtOp::OcrRecognizePage>(&OcrRecognizePage);
    extensions.Register<ExtOp::OcrShowDialog>(&OcrShowDialog);
}

}  // namespace pdfhost
