#include "save_close_dispatchers.h"

#include <memory>
#include <utility>
#include <vector>

#include "app/platform_services.h"
#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "bridge/page_dialog.h"
#include "document/batch_document_session.h"
#include "document/current_document.h"
#include "document/document_services.h"
#include "document/file_stream_dispatchers.h"
#include "document/host_save_command.h"
#include "document/save_as_name.h"
#include "host/host_string.h"
#include "redaction/redaction_strings.h"
#include "util/utf.h"

namespace {

// `isSaveAs` as the JSON library turns a value into a boolean. Values it has no boolean for
// (texts, arrays, objects) count as false.
bool IsSaveAs(const Json::Value& value) {
    return (value.isBool() || value.isNumeric()) && value.asBool();
}

// Hide read-only, prompt before overwriting.
constexpr unsigned kSaveDialogFlags = 6;

}  // namespace

Json::Value SaveDocumentDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const bool saveAs = IsSaveAs(Member(root, "isSaveAs"));
    if (const BatchState& batch = services_.documents.batch(); batch.running) {
        if (batch.session != nullptr)
            batch.session->SaveCurrent();
        return MakeResult(err::kOk, Json::Value());
    }
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    services_.temporarySave.Start(services_.host.HostDocIsTemporary(doc) != 0);
    return saveAs ? SaveAs(doc, root) : SaveInPlace(doc, services_.temporarySave.underway());
}

Json::Value SaveDocumentDispatcher::SaveInPlace(HostDoc doc, bool temporary) {
    HostApi& host = services_.host;
    // The host saves inside the command, its saved and closed hooks included.
    services_.platform.SendWindowCommand(host.HostAppGetMainWindow(), kHostSaveCommand);
    if (temporary) {
        // The host puts the saved file in the place of a temporary document, so `doc` is gone;
        // the saved hook alone tells whether the save happened.
        const bool saved = services_.temporarySave.TakeSaved();
        return saved ? MakeResult(err::kOk, Json::Value()) : Fail(err::kSavingDocFailed);
    }
    return host.HostDocIsModified(doc) != 0 ? Fail(err::kSavingDocFailed)
                                            : MakeResult(err::kOk, Json::Value());
}

Json::Value SaveDocumentDispatcher::SaveAs(HostDoc doc, const Json::Value& root) {
    HostApi& host = services_.host;
    const Json::Value& suffix = Member(root, "suffix");
    HostWide fileName(host);
    host.HostDocGetFileName(doc, fileName);

    FileDialogSettings settings;
    settings.save = true;
    settings.defaultExtension = L"pdf";
    settings.initialName =
        SaveAsName(fileName.Text(), suffix.isString() ? FromUtf8(suffix.asString()) : L"");
    settings.filter = ResourceString(ids::kPdfFiles) + L"|*.pdf||";
    settings.flags = kSaveDialogFlags;
    settings.parent = host.HostAppGetMainWindow();
    const std::unique_ptr<FileDialog> dialog = services_.platform.MakeFileDialog(settings);
    if (dialog == nullptr || !dialog->Run())
        return Fail(err::kSaveAsCanceled);
    const std::vector<std::wstring> paths = dialog->Paths();
    if (paths.empty() || paths.front().empty())
        return Fail(err::kSavingDocFailed);
    const HostSaveAsOptions options{0, 1, 0, 0};
    if (host.HostDocSaveAs(doc, paths.front().c_str(), 0, 0, &options) == 0)
        return Fail(err::kSavingDocFailed);
    return MakeResult(err::kOk, Json::Value());
}

Json::Value ReloadDispatcher::Run() {
    if (owner_ != nullptr)
        static_cast<PageDialog*>(owner_)->Reload(false);
    return EmptyTextReply();
}

Json::Value CloseCurrentFileDispatcher::Run() {
    const BatchState& batch = services_.documents.batch();
    if (batch.document != nullptr) {
        const bool keepOpen = batch.session != nullptr && batch.session->CurrentWasOpen();
        HostDoc doc = std::exchange(batch.document, nullptr);
        if (!keepOpen)
            services_.host.HostDocClose(doc, 0, 0, 0);
    }
    return MakeResult(err::kOk, Json::Value());
}
