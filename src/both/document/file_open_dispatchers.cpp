#include "document/file_open_dispatchers.h"

#include "app/platform_services.h"
#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "bridge/page_dialog.h"
#include "bridge/page_events.h"
#include "document/cloud_drive.h"
#include "document/document_registry.h"
#include "document/document_services.h"
#include "document/download_job.h"
#include "document/file_descriptor.h"
#include "document/upload_file_dialog.h"
#include "host/extension_tables.h"

namespace {

constexpr unsigned kHideReadOnly = 0x4;
constexpr unsigned kOverwritePrompt = 0x2;
constexpr unsigned kAllowMultiSelect = 0x200;
constexpr unsigned kFileMustExist = 0x1000;

FileDialogSettings PdfSelection(void* owner) {
    FileDialogSettings settings;
    settings.save = false;
    settings.defaultExtension = L".pdf";
    settings.initialName = L"*.pdf";
    settings.flags = kHideReadOnly | kOverwritePrompt | kAllowMultiSelect | kFileMustExist;
    settings.filter = L"PDF Files (*.pdf)|*.PDF||";
    settings.parent = owner != nullptr ? static_cast<PageDialog*>(owner)->Window() : nullptr;
    return settings;
}

// The part of a service id after its last "-": the revision of the file named by the part before.
std::wstring TailOf(const std::wstring& aiFileId) {
    const auto dash = aiFileId.rfind(L'-');
    return dash == std::wstring::npos ? std::wstring() : aiFileId.substr(dash + 1);
}

std::wstring HeadOf(const std::wstring& aiFileId) {
    const auto dash = aiFileId.rfind(L'-');
    return dash == std::wstring::npos ? std::wstring() : aiFileId.substr(0, dash);
}

// Hooks of the tab record handed to the host's web view; the view may call them at any time,
// so the record lives for the whole run.
void BREVAN_HOSTCALL TabIgnore(void*) {}
int BREVAN_HOSTCALL TabAgree(void*) {
    return 1;
}

HostBrowserTabRecord* TabRecord() {
    static HostBrowserTabRecord record = [] {
        HostBrowserTabRecord made;
        for (std::size_t word : {2, 4, 8})
            made.setWord(word, HookWord<HostBrowserTabNotifyFn>(&TabIgnore));
        for (std::size_t word : {9, 10})
            made.setWord(word, HookWord<HostBrowserTabAgreeFn>(&TabAgree));
        return made;
    }();
    return &record;
}

}  // namespace

Json::Value ShowFileSelectDialogDispatcher::Run() {
    CUploadFileDialog dialog(services_.host, services_.platform, PdfSelection(owner_));
    if (!dialog.DoModal())
        return Fail(err::kFileDialogCancelled);
    const std::wstring drive = DriveOfPlugin(dialog.PluginName());
    const std::wstring account = drive != L"local" ? dialog.Account() : std::wstring();

    DocumentRegistry& registry = *services_.documents.registry();
    Json::Value data(Json::arrayValue);
    for (const std::wstring& path : dialog.Paths()) {
        // Records made for the paths before stay.
        if (path.empty())
            return Fail(err::kNoPath);
        const std::wstring id = registry.newIdForPath(path);
        registry.bindPath(id, path);
        FileDescriptor descriptor;
        descriptor.id = id;
        descriptor.name = LastPathComponent(path);
        descriptor.size = FileSizeLow32(path);
        descriptor.isCurrentDoc = false;
        descriptor.drive = drive;
        descriptor.accountId = account;
        descriptor.account = account;
        data.append(descriptor.ToJson());
    }
    return MakeResult(err::kOk, data);
}

Json::Value OpenFileDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring fileUrl = TextOf(Member(root, "fileUrl"));
    if (fileUrl.empty())
        return Fail(err::kNoUrl);
    const std::wstring fileName = TextOf(Member(root, "fileName"));
    if (fileName.empty())
        return Fail(err::kNoFileName);
    const std::wstring aiFileId = TextOf(Member(root, "aiFileId"));
    if (aiFileId.empty())
        return Fail(err::kNoAiFileId);

    DocumentRegistry& registry = *services_.documents.registry();
    HostApi& host = services_.host;
    const std::wstring head = HeadOf(aiFileId);
    HostDoc doc = nullptr;
    bool download = true;
    if (registry.docByAiFileHead(head, doc)) {
        std::wstring tailOnRecord;
        registry.aiFileTailByHead(head, tailOnRecord);
        host.HostAppActivateDoc(doc);
        if (tailOnRecord == TailOf(aiFileId)) {
            download = false;
        } else {
            // Another revision of the same file: the open one goes first.
            host.HostDocClose(doc, 1, 0, 0);
        }
    }
    if (download) {
        const int32_t code = DownloadJob(services_, fileUrl, fileName, aiFileId).Run(doc);
        if (code != err::kOk) {
            DocOpenFailedEvent(services_.page).Send();
            return Fail(code);
        }
    }

    std::wstring id;
    std::wstring path;
    registry.findIdByDoc(doc, id);
    registry.pathOf(id, path);
    FileDescriptor descriptor;
    descriptor.id = id;
    descriptor.aiFileId = aiFileId;
    descriptor.name = fileName;
    descriptor.size = FileSizeLow32(path);
    descriptor.isCurrentDoc = true;
    Json::Value data(Json::arrayValue);
    data.append(descriptor.ToJson());
    return MakeResult(err::kOk, data);
}

Json::Value SetIdToFileDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring id = FileIdOf(root);
    if (id.empty())
        return Fail(err::kNoId);
    const std::wstring aiFileId = TextOf(Member(root, "aiFileId"));
    if (aiFileId.empty())
        return Fail(err::kNoAiFileId);
    services_.documents.registry()->bindAiFileId(id, aiFileId);
    return MakeResult(err::kOk, Json::Value());
}

Json::Value OpenUrlInBrowserDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring url = TextOf(Member(root, "url"));
    if (url.empty())
        return Fail(err::kNoUrl);
    // Numbers count by their value; a text, array or object, which the JSON library cannot take
    // as a boolean, counts as false.
    const Json::Value& inTabValue = Member(root, "inVelmoraTab");
    const bool inTab = inTabValue.isConvertibleTo(Json::booleanValue) && inTabValue.asBool();

    if (!inTab) {
        if (!services_.platform.OpenUrlExternally(url))
            return Fail(err::kShellExecuteFailed);
        return MakeResult(err::kOk, Json::Value());
    }
    HostApi& host = services_.host;
    HostExtTable browser = FindExtensionTable(host, hostops::ExtTable::BrowserExt);
    void* tab = nullptr;
    if (browser == nullptr ||
        host.BrowserExtOpenUrl(browser, url.c_str(), 0, 0, TabRecord(), &tab) == 0 ||
        tab == nullptr) {
        return Fail(err::kNoHtmlView);
    }
    return MakeResult(err::kOk, Json::Value());
}
