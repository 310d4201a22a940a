#include "create_dispatcher.h"

#include <string_view>

#include "account/sign_in_dispatchers.h"
#include "app/brevan.h"
#include "app/progress_bar_host.h"
#include "document/document_query_dispatchers.h"
#include "document/document_state_dispatchers.h"
#include "document/file_open_dispatchers.h"
#include "document/file_stream_dispatchers.h"
#include "document/form_field_dispatchers.h"
#include "document/page_text_dispatchers.h"
#include "document/progress_dispatchers.h"
#include "document/save_close_dispatchers.h"
#include "redaction/annot_dispatchers.h"
#include "redaction/mark_dispatchers.h"
#include "redaction/point_note_dispatchers.h"
#include "redaction/redact_dispatchers.h"
#include "redaction/replace_text_dispatcher.h"
#include "redaction/text_search_dispatchers.h"

namespace {

struct CommandArgs {
    Brevan& app;
    void* owner;
    const std::wstring& params;
    ChannelFileStream& stream;
};

using Factory = std::unique_ptr<BaseDispatcher> (*)(const CommandArgs&);

struct CommandEntry {
    std::wstring_view name;
    Factory make;
};

// Commands that take nothing drop the request's parameters unseen.
template <typename Command>
std::unique_ptr<BaseDispatcher> TakesNothing(const CommandArgs& args) {
    return std::make_unique<Command>(args.app);
}

template <typename Command>
std::unique_ptr<BaseDispatcher> TakesParams(const CommandArgs& args) {
    return std::make_unique<Command>(args.app, args.params.c_str());
}

// The file stream commands keep the channel's stream, which outlives the request.
template <typename Command>
std::unique_ptr<BaseDispatcher> TakesParamsAndStream(const CommandArgs& args) {
    return std::make_unique<Command>(args.app, args.params.c_str(), args.stream);
}

template <typename Command>
std::unique_ptr<BaseDispatcher> TakesStream(const CommandArgs& args) {
    return std::make_unique<Command>(args.app, args.stream);
}

template <typename Command>
std::unique_ptr<BaseDispatcher> TakesOwner(const CommandArgs& args) {
    return std::make_unique<Command>(args.owner);
}

template <typename Command>
std::unique_ptr<BaseDispatcher> TakesAppAndOwner(const CommandArgs& args) {
    return std::make_unique<Command>(args.app, args.owner);
}

// The commands of module "base", in the order they are compared.
constexpr CommandEntry kCommands[] = {
    {L"loginIn", &TakesNothing<LoginInDispatcher>},
    {L"getUser", &TakesNothing<GetUserDispatcher>},
    {L"getUserJWT", &TakesNothing<GetUserJWTDispatcher>},
    {L"getCurrentDoc", &TakesNothing<GetCurrentDocDispatcher>},
    {L"getFileStream", &TakesParamsAndStream<GetFileStreamDispatcher>},
    {L"releaseFileStream", &TakesStream<ReleaseFileStreamDispatcher>},
    {L"showFileSelectDialog", &TakesAppAndOwner<ShowFileSelectDialogDispatcher>},
    {L"openFile", &TakesParams<OpenFileDispatcher>},
    {L"setIdToFile", &TakesParams<SetIdToFileDispatcher>},
    {L"openUrlInBrowser", &TakesParams<OpenUrlInBrowserDispatcher>},
    {L"findTexts", &TakesParams<FindTextsDispatcher>},
    {L"markTexts", &TakesParams<MarkTextDispatcher>},
    {L"addAnnot", &TakesParams<AddAnnotDispatcher>},
    {L"removeAnnots", &TakesParams<RemoveAnnotsDispatcher>},
    {L"setFormFieldValue", &TakesParams<SetFormFieldValueDispatcher>},
    {L"reload", &TakesOwner<ReloadDispatcher>},
    {L"getDocMetadata", &TakesParams<GetDocMetadataDispatcher>},
    {L"replaceText", &TakesParams<ReplaceTextDispatcher>},
    {L"addAnnotAtPoint", &TakesParams<AddAnnotAtPointDispatcher>},
    {L"getAnnotsContentAtPoint", &TakesParams<GetAnnotsContentAtPointDispatcher>},
    {L"removeAnnotsAtPoint", &TakesParams<RemoveAnnotsAtPointDispatcher>},
    {L"clearMarkTexts", &TakesNothing<ClearMarkTextsDispatcher>},
    {L"isCurrentDocModified", &TakesNothing<IsCurrentDocModifiedDispatcher>},
    {L"redactApply", &TakesParams<RedactApplyDispatcher>},
    {L"saveDocument", &TakesParams<SaveDocumentDispatcher>},
    {L"createProgressBar", &TakesParams<CreateProgressBarDispatcher>},
    {L"updateProgressBar", &TakesParams<UpdateProgressBarDispatcher>},
    {L"destroyProgressBar", &TakesNothing<DestroyProgressBarDispatcher>},
    {L"getFileTexts", &TakesParams<GetFileTextsDispatcher>},
    {L"checkFilePermission", &TakesNothing<CheckFilePermissionDispatcher>},
    {L"getAllFormFields", &TakesNothing<GetAllFormFieldsDispatcher>},
    {L"getFilePageCount", &TakesNothing<GetFilePageCountDispatcher>},
    {L"closeCurrentFile", &TakesNothing<CloseCurrentFileDispatcher>},
    {L"getFileImagesType", &TakesNothing<GetFileImagesTypeDispatcher>},
    {L"hasOtherRedact", &TakesNothing<HasOtherRedactDispatcher>},
    {L"runFileOCR", &TakesParams<RunFileOCRDispatcher>},
    {L"findTextList", &TakesParams<FindTextListDispatcher>},
};

constexpr std::wstring_view kModule = L"base";

}  // namespace

std::unique_ptr<BaseDispatcher> CreateDispatcher(Brevan& app, void* owner,
                                                 const std::wstring& command,
                                                 const std::wstring& module,
                                                 const std::wstring& paramText,
                                                 ChannelFileStream& fileStream) {
    std::unique_ptr<BaseDispatcher> dispatcher;
    if (module == kModule) {
        const CommandArgs args{app, owner, paramText, fileStream};
        for (const CommandEntry& entry : kCommands) {
            if (entry.name == command) {
                dispatcher = entry.make(args);
                break;
            }
        }
    }
    if (!dispatcher)
        dispatcher = std::make_unique<BaseDispatcher>();
    dispatcher->progressBar = app.progressBar.get();
    return dispatcher;
}
