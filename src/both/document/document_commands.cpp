#include "document_commands.h"

#include <memory>

#include "bridge/command_table.h"
#include "document/document_query_dispatchers.h"
#include "document/document_services.h"
#include "document/document_state_dispatchers.h"
#include "document/file_open_dispatchers.h"
#include "document/file_stream_dispatchers.h"
#include "document/form_field_dispatchers.h"
#include "document/page_text_dispatchers.h"
#include "document/progress_dispatchers.h"
#include "document/save_close_dispatchers.h"

void AddDocumentCommands(CommandTable& table, const DocumentServices& services) {
    table.Add(L"getCurrentDoc", TakingNothing<GetCurrentDocDispatcher>(services));
    // The file stream commands keep the channel's stream, which outlives the request.
    table.Add(L"getFileStream", [&services](const CommandRequest& request) {
        return std::make_unique<GetFileStreamDispatcher>(services, request.params, request.stream);
    });
    table.Add(L"releaseFileStream", [&services](const CommandRequest& request) {
        return std::make_unique<ReleaseFileStreamDispatcher>(services, request.stream);
    });
    table.Add(L"showFileSelectDialog", [&services](const CommandRequest& request) {
        return std::make_unique<ShowFileSelectDialogDispatcher>(services, request.owner);
    });
    table.Add(L"openFile", TakingParams<OpenFileDispatcher>(services));
    table.Add(L"setIdToFile", TakingParams<SetIdToFileDispatcher>(services));
    table.Add(L"openUrlInBrowser", TakingParams<OpenUrlInBrowserDispatcher>(services));
    table.Add(L"setFormFieldValue", TakingParams<SetFormFieldValueDispatcher>(services));
    table.Add(L"reload", [](const CommandRequest& request) {
        return std::make_unique<ReloadDispatcher>(request.owner);
    });
    table.Add(L"getDocMetadata", TakingParams<GetDocMetadataDispatcher>(services));
    table.Add(L"isCurrentDocModified", TakingNothing<IsCurrentDocModifiedDispatcher>(services));
    table.Add(L"saveDocument", TakingParams<SaveDocumentDispatcher>(services));
    table.Add(L"createProgressBar", TakingParams<CreateProgressBarDispatcher>(services));
    table.Add(L"updateProgressBar", TakingParams<UpdateProgressBarDispatcher>(services));
    table.Add(L"destroyProgressBar", TakingNothing<DestroyProgressBarDispatcher>(services));
    table.Add(L"getFileTexts", TakingParams<GetFileTextsDispatcher>(services));
    table.Add(L"checkFilePermission", TakingNothing<CheckFilePermissionDispatcher>(services));
    table.Add(L"getAllFormFields", TakingNothing<GetAllFormFieldsDispatcher>(services));
    table.Add(L"getFilePageCount", TakingNothing<GetFilePageCountDispatcher>(services));
    table.Add(L"closeCurrentFile", TakingNothing<CloseCurrentFileDispatcher>(services));
    table.Add(L"getFileImagesType", TakingNothing<GetFileImagesTypeDispatcher>(services));
    table.Add(L"runFileOCR", TakingParams<RunFileOCRDispatcher>(services));
}
