// The message box and the editor's tools.
#include "message_box.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

// The box's parent is the editor's main window whatever `parent` names; the check box state
// comes back unchecked (the box has none).
int MessageBox(const wchar_t* text, int buttons, const wchar_t* title, int* checkState,
               HostWindow) {
    if (checkState != nullptr)
        *checkState = 0;
    return Guarded(0, [&](HostApp& app) {
        return ShowMessageBox(app, MessageBoxRequest{Utf8Of(text), Utf8Of(title), buttons});
    });
}

HostTool AppGetToolByName(const char* name) {
    return Guarded<HostTool>(nullptr, [&](HostApp& app) -> HostTool {
        return name != nullptr ? app.Tools().Find(name) : nullptr;
    });
}

void AppSetCurrentTool(HostTool tool, int) {
    Guarded([&](HostApp& app) { app.Tools().SetCurrent(tool); });
}

}  // namespace

void RegisterDialogTables(TableManager& tables) {
    tables.Register<Op::HostMessageBox>(&MessageBox);
    tables.Register<Op::HostAppGetToolByName>(&AppGetToolByName);
    tables.Register<Op::HostAppSetCurrentTool>(&AppSetCurrentTool);
}

}  // namespace pdfhost
