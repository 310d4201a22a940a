// The ribbon: bars of the main windows, categories, panels, elements, drop-down entries and
// their properties and procedures.
#include <algorithm>

#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

uintptr_t Value(const void* handle) {
    return reinterpret_cast<uintptr_t>(handle);
}

template <typename Handle>
Handle HandleOf(uintptr_t value) {
    return reinterpret_cast<Handle>(value);
}

bool IsFrame(HostApp& app, HostFrame frame) {
    const std::vector<HostFrame> frames = app.Frames();
    return std::find(frames.begin(), frames.end(), frame) != frames.end();
}

// Adds a named child; nothing for an unknown parent or an empty name.
uintptr_t AddNamed(HostApp& app, const void* parent, RibbonKind kind, const wchar_t* name,
                   const wchar_t* title) {
    if (name == nullptr || *name == L'\0')
        return 0;
    return app.Ribbons().AddChild(Value(parent), kind, name, TextOf(title),
                                  TableManager::CallingPlugin());
}

uintptr_t FindNamed(HostApp& app, const void* parent, RibbonKind kind, const wchar_t* name) {
    if (name == nullptr)
        return 0;
    const RibbonNode* found = app.Ribbons().FindChild(Value(parent), kind, name);
    return found != nullptr ? found->handle : 0;
}

// Sets one property of an element or entry and tells the views.
template <typename Set>
void SetOnButton(HostRibbonItem item, Set set) {
    Guarded([&](HostApp& app) {
        if (RibbonNode* node = app.Ribbons().FindButton(Value(item))) {
            set(*node);
            app.Ribbons().Touched(node->handle);
        }
    });
}

HostRibbonBar RibbonGetBar(HostFrame frame) {
    return Guarded<HostRibbonBar>(nullptr, [&](HostApp& app) {
        return IsFrame(app, frame) ? HandleOf<HostRibbonBar>(app.Ribbons().BarOf(frame)) : nullptr;
    });
}

HostRibbonCategory RibbonAddCategory(HostRibbonBar bar, const wchar_t* name, const wchar_t* title) {
    return Guarded<HostRibbonCategory>(nullptr, [&](HostApp& app) {
        return HandleOf<HostRibbonCategory>(AddNamed(app, bar, RibbonKind::kCategory, name, title));
    });
}

HostRibbonCategory RibbonFindCategory(HostRibbonBar bar, const wchar_t* name) {
    return Guarded<HostRibbonCategory>(nullptr, [&](HostApp& app) {
        return HandleOf<HostRibbonCategory>(FindNamed(app, bar, RibbonKind::kCategory, name));
    });
}

HostRibbonPanel RibbonAddPanel(HostRibbonCategory category, const wchar_t* name,
                               const wchar_t* title, int) {
    return Guarded<HostRibbonPanel>(nullptr, [&](HostApp& app) {
        return HandleOf<HostRibbonPanel>(AddNamed(app, category, RibbonKind::kPanel, name, title));
    });
}

HostRibbonPanel RibbonFindPanel(HostRibbonCategory category, const wchar_t* name) {
    return Guarded<HostRibbonPanel>(nullptr, [&](HostApp& app) {
        return HandleOf<HostRibbonPanel>(FindNamed(app, category, RibbonKind::kPanel, name));
    });
}

HostRibbonElement RibbonAddElement(HostRibbonPanel panel, int type, const wchar_t* name,
                                   const wchar_t* title, int) {
    return Guarded<HostRibbonElement>(nullptr, [&](HostApp& app) {
        const uintptr_t element = AddNamed(app, panel, RibbonKind::kElement, name, title);
        if (RibbonNode* node = app.Ribbons().Find(element, RibbonKind::kElement))
            node->elementType = type;
        return HandleOf<HostRibbonElement>(element);
    });
}

HostRibbonElement RibbonFindElement(HostRibbonPanel panel, const wchar_t* name) {
    return Guarded<HostRibbonElement>(nullptr, [&](HostApp& app) {
        return HandleOf<HostRibbonElement>(FindNamed(app, panel, RibbonKind::kElement, name));
    });
}

HostRibbonItem RibbonAddSubItem(HostRibbonElement element, int, const wchar_t* name,
                                const wchar_t* title, int position, int, int, int) {
    return Guarded<HostRibbonItem>(nullptr, [&](HostApp& app) {
        const uintptr_t entry = AddNamed(app, element, RibbonKind::kEntry, name, title);
        if (RibbonNode* node = app.Ribbons().Find(entry, RibbonKind::kEntry))
            node->position = position;
        return HandleOf<HostRibbonItem>(entry);
    });
}

void RibbonSetExecuteProc(HostRibbonItem item, HostRibbonExecuteProc proc) {
    SetOnButton(item, [&](RibbonNode& node) { node.execute = proc; });
}

void RibbonSetEnableProc(HostRibbonItem item, HostRibbonEnableProc proc) {
    SetOnButton(item, [&](RibbonNode& node) { node.enable = proc; });
}

void RibbonSetKeyTip(HostRibbonItem item, const wchar_t* text) {
    SetOnButton(item, [&](RibbonNode& node) { node.keyTip = TextOf(text); });
}

void RibbonSetTooltip(HostRibbonItem item, const wchar_t* text) {
    SetOnButton(item, [&](RibbonNode& node) { node.tooltip = TextOf(text); });
}

void RibbonSetImages(HostRibbonItem item, const wchar_t* largeName, const wchar_t* smallName) {
    SetOnButton(item, [&](RibbonNode& node) {
        node.largeImage = TextOf(largeName);
        node.smallImage = TextOf(smallName);
    });
}

// An entry's button form is the entry itself: the same handle serves both.
HostRibbonButton RibbonItemGetButton(HostRibbonItem item) {
    return Guarded<HostRibbonButton>(nullptr, [&](HostApp& app) -> HostRibbonButton {
        const RibbonNode* node = app.Ribbons().Find(Value(item), RibbonKind::kEntry);
        return node != nullptr ? HandleOf<HostRibbonButton>(node->handle) : nullptr;
    });
}

}  // namespace

void RegisterRibbonTables(TableManager& tables) {
    tables.Register<Op::HostRibbonGetBar>(&RibbonGetBar);
    tables.Register<Op::HostRibbonAddCategory>(&RibbonAddCategory);
    tables.Register<Op::HostRibbonFindCategory>(&RibbonFindCategory);
    tables.Register<Op::HostRibbonAddPanel>(&RibbonAddPanel);
    tables.Register<Op::HostRibbonFindPanel>(&RibbonFindPanel);
    tables.Register<Op::HostRibbonAddElement>(&RibbonAddElement);
    tables.Register<Op::HostRibbonFindElement>(&RibbonFindElement);
    tables.Register<Op::HostRibbonAddSubItem>(&RibbonAddSubItem);
    tables.Register<Op::HostRibbonSetExecuteProc>(&RibbonSetExecuteProc);
    tables.Register<Op::HostRibbonSetEnableProc>(&RibbonSetEnableProc);
    tables.Register<Op::HostRibbonSetKeyTip>(&RibbonSetKeyTip);
    tables.Register<Op::HostRibbonSetTooltip>(&RibbonSetTooltip);
    tables.Register<Op::HostRibbonSetImages>(&RibbonSetImages);
    tables.Register<Op::HostRibbonItemGetButton>(&RibbonItemGetButton);
}

}  // namespace pdfhost
