// Progress windows: made, driven and taken down by plug-ins.
#include "parent_window.h"
#include "progress_window.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

HostProgress ProgressNew(HostWindow parent, int flag) {
    return Guarded<HostProgress>(nullptr, [&](HostApp& app) {
        return app.ProgressWindows().Emplace(app, ParentWindowOf(app, parent), flag != 0);
    });
}

void ProgressSetText(HostProgress progress, const wchar_t* text) {
    Guarded([&](HostApp& app) {
        if (ProgressWindow* window = app.ProgressWindows().Find(progress))
            window->SetText(Utf8Of(text));
    });
}

void ProgressSetRange(HostProgress progress, int low, int high) {
    Guarded([&](HostApp& app) {
        if (ProgressWindow* window = app.ProgressWindows().Find(progress))
            window->SetRange(low, high);
    });
}

void ProgressSetPos(HostProgress progress, int pos) {
    Guarded([&](HostApp& app) {
        if (ProgressWindow* window = app.ProgressWindows().Find(progress))
            window->SetPos(pos);
    });
}

void ProgressPump(HostProgress progress) {
    Guarded([&](HostApp& app) {
        if (ProgressWindow* window = app.ProgressWindows().Find(progress))
            window->Pump();
    });
}

int ProgressIsCancelled(HostProgress progress) {
    return Guarded(0, [&](HostApp& app) {
        const ProgressWindow* window = app.ProgressWindows().Find(progress);
        return window != nullptr && window->IsCancelled() ? 1 : 0;
    });
}

void ProgressSetCancelled(HostProgress progress, int cancelled) {
    Guarded([&](HostApp& app) {
        if (ProgressWindow* window = app.ProgressWindows().Find(progress))
            window->SetCancelled(cancelled != 0);
    });
}

void ProgressDestroy(HostProgress progress) {
    Guarded([&](HostApp& app) {
        if (ProgressWindow* window = app.ProgressWindows().Find(progress)) {
            window->Close();
            app.ProgressWindows().Erase(progress);
        }
    });
}

}  // namespace

void RegisterProgressTables(TableManager& tables) {
    tables.Register<Op::HostProgressNew>(&ProgressNew);
    tables.Register<Op::HostProgressSetText>(&ProgressSetText);
    tables.Register<Op::HostProgressSetRange>(&ProgressSetRange);
    tables.Register<Op::HostProgressSetPos>(&ProgressSetPos);
    tables.Register<Op::HostProgressPump>(&ProgressPump);
    tables.Register<Op::HostProgressIsCancelled>(&ProgressIsCancelled);
    tables.Register<Op::HostProgressSetCancelled>(&ProgressSetCancelled);
    tables.Register<Op::HostProgressDestroy>(&ProgressDestroy);
}

}  // namespace pdfhost
