#include "create_dispatcher.h"

#include <string_view>

#include "document/document_query_dispatchers.h"
#include "document/document_state_dispatchers.h"
#include "document/form_field_dispatchers.h"
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

// The commands of module "base", in the order they are compared.
constexpr CommandEntry kCommands[] = {
    {L"getCurrentDoc", &TakesNothing<GetCurrentDocDispatcher>},
    {L"findTexts", &TakesParams<FindTextsDispatcher>},
    {L"markTexts", &TakesParams<MarkTextDispatcher>},
    {L"addAnnot", &TakesParams<AddAnnotDispatcher>},
    {L"removeAnnots", &TakesParams<RemoveAnnotsDispatcher>},
    {L"setFormFieldValue", &TakesParams<SetFormFieldValueDispatcher>},
    {L"getDocMetadata", &TakesParams<GetDocMetadataDispatcher>},
    {L"replaceText", &TakesParams<ReplaceTextDispatcher>},
    {L"addAnnotAtPoint", &TakesParams<AddAnnotAtPointDispatcher>},
    {L"getAnnotsContentAtPoint", &TakesParams<GetAnnotsContentAtPointDispatcher>},
    {L"removeAnnotsAtPoint", &TakesParams<RemoveAnnotsAtPointDispatcher>},
    {L"clearMarkTexts", &TakesNothing<ClearMarkTextsDispatcher>},
    {L"isCurrentDocModified", &TakesNothing<IsCurrentDocModifiedDispatcher>},
    {L"redactApply", &TakesParams<RedactApplyDispatcher>},
    {L"checkFilePermission", &TakesNothing<CheckFilePermissionDispatcher>},
    {L"getAllFormFields", &TakesNothing<GetAllFormFieldsDispatcher>},
    {L"getFilePageCount", &TakesNothing<GetFilePageCountDispatcher>},
    {L"getFileImagesType", &TakesNothing<GetFileImagesTypeDispatcher>},
    {L"hasOtherRedact", &TakesNothing<HasOtherRedactDispatcher>},
    {L"findTextList", &TakesParams<FindTextListDispatcher>},
};

constexpr std::wstring_view kModule = L"base";

}  // namespace

std::unique_ptr<BaseDispatcher> CreateDispatcher(Brevan& app, void* owner,
                                                 const std::wstring& command,
                                                 const std::wstring& module,
                                                 const std::wstring& paramText,
                                                 ChannelFileStream& fileStream) {
    if (module != kModule)
        return std::make_unique<BaseDispatcher>();
    const CommandArgs args{app, owner, paramText, fileStream};
    for (const CommandEntry& entry : kCommands) {
        if (entry.name == command)
            return entry.make(args);
    }
    return std::make_unique<BaseDispatcher>();
}
