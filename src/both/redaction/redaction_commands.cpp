#include "redaction_commands.h"

#include "bridge/command_table.h"
#include "redaction/annot_dispatchers.h"
#include "redaction/mark_dispatchers.h"
#include "redaction/point_note_dispatchers.h"
#include "redaction/redact_dispatchers.h"
#include "redaction/replace_text_dispatcher.h"
#include "redaction/text_search_dispatchers.h"

void AddRedactionCommands(CommandTable& table, Brevan& app) {
    table.Add(L"findTexts", TakingParams<FindTextsDispatcher>(app));
    table.Add(L"findTextList", TakingParams<FindTextListDispatcher>(app));
    table.Add(L"markTexts", TakingParams<MarkTextDispatcher>(app));
    table.Add(L"clearMarkTexts", TakingNothing<ClearMarkTextsDispatcher>(app));
    table.Add(L"addAnnot", TakingParams<AddAnnotDispatcher>(app));
    table.Add(L"removeAnnots", TakingParams<RemoveAnnotsDispatcher>(app));
    table.Add(L"replaceText", TakingParams<ReplaceTextDispatcher>(app));
    table.Add(L"addAnnotAtPoint", TakingParams<AddAnnotAtPointDispatcher>(app));
    table.Add(L"getAnnotsContentAtPoint", TakingParams<GetAnnotsContentAtPointDispatcher>(app));
    table.Add(L"removeAnnotsAtPoint", TakingParams<RemoveAnnotsAtPointDispatcher>(app));
    table.Add(L"redactApply", TakingParams<RedactApplyDispatcher>(app));
    table.Add(L"hasOtherRedact", TakingNothing<HasOtherRedactDispatcher>(app));
}
