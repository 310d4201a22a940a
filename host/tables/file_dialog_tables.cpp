// The cloud places of file dialogs. pdfhost serves no cloud storage on this platform: a dialog
// shows the local disk only, so attaching adds nothing, notifications need no answer, and a
// selection always comes from the local disk (no serving plug-in, no account).
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

void FileDialogAttach(HostFileDialog, int) {}

void FileDialogNotify(const wchar_t*) {}

void FileDialogGetPlugin(HostFileDialog, HostWideString out) {
    Guarded([&](HostApp& app) { SetWide(app, out, std::wstring()); });
}

void FileDialogGetAccount(HostFileDialog, HostWideString out) {
    Guarded([&](HostApp& app) { SetWide(app, out, std::wstring()); });
}

}  // namespace

void RegisterFileDialogTables(TableManager& tables) {
    tables.Register<Op::HostFileDialogAttach>(&FileDialogAttach);
    tables.Register<Op::HostFileDialogNotify>(&FileDialogNotify);
    tables.Register<Op::HostFileDialogGetPlugin>(&FileDialogGetPlugin);
    tables.Register<Op::HostFileDialogGetAccount>(&FileDialogGetAccount);
}

}  // namespace pdfhost
