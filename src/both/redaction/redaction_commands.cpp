#include "redaction_commands.h"

#include "bridge/command_table.h"
#include "redaction/annot_dispatchers.h"
#include "redaction/mark_dispatchers.h"
#include "redaction/point_note_dispatchers.h"
#include "redaction/redact_dispatchers.h"
#include "redaction/redaction_services.h"
#include "redaction/replace_text_dispatcher.h"
#include "redaction/text_search_dispatchers.h"

void AddRedactionCommands(CommandTable& table, const RedactionServices& services) {
    table.Add(L"findTexts", TakingParams<FindTextsDispatcher>(services));
    table.Add(L"findTextList", TakingParams<FindTextListDispatcher>(services));
    table.Add(L"markTexts", TakingParams<MarkTextDispatcher>(services));
    table.Add(L"clearMarkTexts", TakingNothing<ClearMarkTextsDispatcher>(services));
    table.Add(L"addAnnot", TakingParams<AddAnnotDispatcher>(services));
    table.Add(L"removeAnnots", TakingParams<RemoveAnnotsDispatcher>(services));
    table.Add(L"replaceText", TakingParams<ReplaceTextDispatcher>(services));
    table.Add(L"addAnnotAtPoint", TakingParams<AddAnnotAtPointDispatcher>(services));
    table.Add(L"getAnnotsContentAtPoint",
              TakingParams<GetAnnotsContentAtPointDispatcher>(services));
    table.Add(L"removeAnnotsAtPoint", TakingParams<RemoveAnnotsAtPointDispatcher>(services));
    table.Add(L"redactApply", TakingParams<RedactApplyDispatcher>(services));
    table.Add(L"hasOtherRedact", TakingNothing<HasOtherRedactDispatcher>(services));
}
