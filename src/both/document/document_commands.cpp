#include "document_commands.h"

#include <memory>

#include "bridge/command_table.h"
#include "document/document_query_dispatchers.h"
#include "document/document_state_dispatchers.h"
#include "document/file_open_dispatchers.h"
#include "document/file_stream_dispatchers.h"
#include "document/form_field_dispatchers.h"
#include "document/page_text_dispatchers.h"
#include "document/progress_dispatchers.h"
#include "document/save_close_dispatchers.h"

void AddDocumentCommands(CommandTable& table, Brevan& app) {
    table.Add(L"getCurrentDoc", TakingNothing<GetCurrentDocDispatcher>(app));
    // The file stream commands keep the channel's stream, which outlives the request.
    table.Add(L"getFileStream", [&app](const CommandRequest& request) {
        return std::make_unique<GetFileStreamDispatcher>(app, request.params, request.stream);
    });
    table.Add(L"releaseFileStream", [&app](const CommandRequest& request) {
        return std::make_unique<ReleaseFileStreamDispatcher>(app, request.stream);
    });
    table.Add(L"showFileSelectDialog", [&app](const CommandRequest& request) {
        return std::make_unique<ShowFileSelectDialogDispatcher>(app, request.owner);
    });
    table.Add(L"openFile", TakingParams<OpenFileDispatcher>(app));
    table.Add(L"setIdToFile", TakingParams<SetIdToFileDispatcher>(app));
    table.Add(L"openUrlInBrowser", TakingParams<OpenUrlInBrowserDispatcher>(app));
    table.Add(L"setFormFieldValue", TakingParams<SetFormFieldValueDispatcher>(app));
    table.Add(L"reload", [](const CommandRequest& request) {
        return std::make_unique<ReloadDispatcher>(request.owner);
    });
    table.Add(L"getDocMetadata", TakingParams<GetDocMetadataDispatcher>(app));
    table.Add(L"isCurrentDocModified", TakingNothing<IsCurrentDocModifiedDispatcher>(app));
    table.Add(L"saveDocument", TakingParams<SaveDocumentDispatcher>(app));
    table.Add(L"createProgressBar", TakingParams<CreateProgressBarDispatcher>(app));
    table.Add(L"updateProgressBar", TakingParams<UpdateProgressBarDispatcher>(app));
    table.Add(L"destroyProgressBar", TakingNothing<DestroyProgressBarDispatcher>(app));
    table.Add(L"getFileTexts", TakingParams<GetFileTextsDispatcher>(app));
    table.Add(L"checkFilePermission", TakingNothing<CheckFilePermissionDispatcher>(app));
    table.Add(L"getAllFormFields", TakingNothing<GetAllFormFieldsDispatcher>(app));
    table.Add(L"getFilePageCount", TakingNothing<GetFilePageCountDispatcher>(app));
    table.Add(L"closeCurrentFile", TakingNothing<CloseCurrentFileDispatcher>(app));
    table.Add(L"getFileImagesType", TakingNothing<GetFileImagesTypeDispatcher>(app));
    table.Add(L"runFileOCR", TakingParams<RunFileOCRDispatcher>(app));
}
