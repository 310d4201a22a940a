// Task panes and the notification surface.
#include <QMainWindow>

#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

// The pane belongs to the main window being announced to the plug-ins, else to the first one.
void AppRegisterPane(HostPaneRecord* record) {
    Guarded([&](HostApp& app) {
        QMainWindow* frame =
            app.AnnouncedFrame() != nullptr ? app.AnnouncedFrame() : app.MainWindow();
        app.Panes().Register(record, TableManager::CallingPlugin(), frame);
    });
}

void AppShowPane(const char* paneName, int show) {
    Guarded([&](HostApp& app) {
        if (paneName != nullptr)
            app.Panes().Show(paneName, show != 0, app.MainWindow());
    });
}

HostBubbleSource BubbleCreate() {
    return Guarded<HostBubbleSource>(nullptr, [](HostApp& app) {
        return app.Bubbles().MakeSource(TableManager::CallingPlugin());
    });
}

void BubbleShow(HostBubbleSource source, uint32_t, int, const wchar_t* text, int milliseconds,
                int style, int) {
    Guarded([&](HostApp& app) {
        app.Bubbles().Show(source, text != nullptr ? text : L"", milliseconds, style,
                           app.MainWindow());
    });
}

void BubbleRegister(HostBubbleSource source, HostBubbleRecord* record) {
    Guarded([&](HostApp& app) { app.Bubbles().Register(source, record); });
}

void BubbleUnregister(HostBubbleSource source, HostBubbleRecord* record) {
    Guarded([&](HostApp& app) { app.Bubbles().Unregister(source, record); });
}

}  // namespace

void RegisterPaneTables(TableManager& tables) {
    tables.Register<Op::HostAppRegisterPane>(&AppRegisterPane);
    tables.Register<Op::HostAppShowPane>(&AppShowPane);
    tables.Register<Op::HostBubbleCreate>(&BubbleCreate);
    tables.Register<Op::HostBubbleShow>(&BubbleShow);
    tables.Register<Op::HostBubbleRegister>(&BubbleRegister);
    tables.Register<Op::HostBubbleUnregister>(&BubbleUnregister);
}

}  // namespace pdfhost
