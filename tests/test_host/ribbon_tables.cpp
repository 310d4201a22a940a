// The ribbon of the one main frame: categories, panels, elements and their entries as one tree of
// named nodes.
#include "engine_tables.h"

namespace testhost {
namespace {

using hostops::Op;

// Every ribbon handle type names a node of the engine's ribbon tree.
template <typename Handle>
HostRibbonItem Node(Handle handle) {
    return Same<HostRibbonItem>(handle);
}

template <typename Handle>
Handle FindChild(Handle parent, const wchar_t* name) {
    return Serve<Handle>(nullptr, [&](MemoryEngine& e) {
        return Same<Handle>(e.FindChild(Node(parent), TextOf(name)));
    });
}

template <typename Handle, typename Parent>
Handle AddChild(Parent parent, const wchar_t* name, const wchar_t* title) {
    return Serve<Handle>(nullptr, [&](MemoryEngine& e) -> Handle {
        if (e.FindChild(Node(parent), TextOf(name)) != nullptr)
            return nullptr;
        return Same<Handle>(e.AddChild(Node(parent), TextOf(name), TextOf(title)));
    });
}

}  // namespace

void RegisterRibbonTables(pdfhost::TableManager& tables) {
    tables.Register<Op::HostRibbonGetBar>([](HostFrame) {
        return Serve<HostRibbonBar>(
            nullptr, [](MemoryEngine& e) { return Same<HostRibbonBar>(e.ribbonBar); });
    });
    tables.Register<Op::HostRibbonFindCategory>([](HostRibbonBar bar, const wchar_t* name) {
        return Same<HostRibbonCategory>(FindChild(bar, name));
    });
    tables.Register<Op::HostRibbonAddCategory>(
        [](HostRibbonBar bar, const wchar_t* name, const wchar_t* title) {
            return AddChild<HostRibbonCategory>(bar, name, title);
        });
    tables.Register<Op::HostRibbonFindPanel>([](HostRibbonCategory category, const wchar_t* name) {
        return Same<HostRibbonPanel>(FindChild(category, name));
    });
    tables.Register<Op::HostRibbonAddPanel>(
        [](HostRibbonCategory category, const wchar_t* name, const wchar_t* title, int) {
            return AddChild<HostRibbonPanel>(category, name, title);
        });
    tables.Register<Op::HostRibbonFindElement>([](HostRibbonPanel panel, const wchar_t* name) {
        return Same<HostRibbonElement>(FindChild(panel, name));
    });
    tables.Register<Op::HostRibbonAddElement>(
        [](HostRibbonPanel panel, int, const wchar_t* name, const wchar_t* title, int) {
            return AddChild<HostRibbonElement>(panel, name, title);
        });
    tables.Register<Op::HostRibbonAddSubItem>(
        [](HostRibbonElement element, int, const wchar_t* name, const wchar_t* title, int, int, int,
           int) { return AddChild<HostRibbonItem>(element, name, title); });
    tables.Register<Op::HostRibbonItemGetButton>(
        [](HostRibbonItem item) { return Same<HostRibbonButton>(item); });
    tables.Register<Op::HostRibbonSetExecuteProc>(
        [](HostRibbonItem item, HostRibbonExecuteProc proc) {
            Serve([&](MemoryEngine& e) {
                if (RibbonNode* node = e.ribbon.Find(item))
                    node->execute = proc;
            });
        });
}

}  // namespace testhost
