#include "shell_fake_host.h"

#include <algorithm>

namespace {

FakeRibbonNode* Node(const void* handle) {
    return static_cast<FakeRibbonNode*>(const_cast<void*>(handle));
}

template <typename Handle>
Handle HandleOf(FakeRibbonNode* node) {
    return reinterpret_cast<Handle>(node);
}

std::wstring Text(const wchar_t* text) {
    return text != nullptr ? text : L"";
}

FakeRibbonNode* AddChild(const void* parent, const wchar_t* name, const wchar_t* title) {
    auto child = std::make_unique<FakeRibbonNode>();
    child->name = Text(name);
    child->title = Text(title);
    FakeRibbonNode* added = child.get();
    Node(parent)->children.push_back(std::move(child));
    return added;
}

std::wstring& W(HostWideString s) {
    return *reinterpret_cast<std::wstring*>(s);
}

}  // namespace

FakeRibbonNode* FakeRibbonNode::Child(const std::wstring& childName) const {
    for (const auto& child : children) {
        if (child->name == childName)
            return child.get();
    }
    return nullptr;
}

ShellFakeHost::ShellFakeHost() {
    loginTable = true;
}

FakeRibbonNode& ShellFakeHost::Bar(HostFrame frame) {
    auto& bar = ribbons[frame];
    if (!bar)
        bar = std::make_unique<FakeRibbonNode>();
    return *bar;
}

FakeRibbonNode* ShellFakeHost::Find(HostFrame frame, std::initializer_list<std::wstring> path) {
    const auto bar = ribbons.find(frame);
    FakeRibbonNode* node = bar != ribbons.end() ? bar->second.get() : nullptr;
    for (const std::wstring& name : path) {
        if (node == nullptr)
            return nullptr;
        node = node->Child(name);
    }
    return node;
}

FakeRibbonNode& ShellFakeHost::Make(HostFrame frame, std::initializer_list<std::wstring> path) {
    FakeRibbonNode* node = &Bar(frame);
    for (const std::wstring& name : path) {
        FakeRibbonNode* child = node->Child(name);
        node = child != nullptr ? child : AddChild(node, name.c_str(), L"");
    }
    return *node;
}

HostRibbonBar ShellFakeHost::HostRibbonGetBar(HostFrame frame) {
    return noRibbon ? nullptr : HandleOf<HostRibbonBar>(&Bar(frame));
}

HostRibbonCategory ShellFakeHost::HostRibbonAddCategory(HostRibbonBar bar, const wchar_t* name,
                                                        const wchar_t* title) {
    ++categoriesAdded;
    return HandleOf<HostRibbonCategory>(AddChild(bar, name, title));
}

HostRibbonCategory ShellFakeHost::HostRibbonFindCategory(HostRibbonBar bar, const wchar_t* name) {
    return HandleOf<HostRibbonCategory>(Node(bar)->Child(Text(name)));
}

HostRibbonPanel ShellFakeHost::HostRibbonAddPanel(HostRibbonCategory category, const wchar_t* name,
                                                  const wchar_t* title, int) {
    ++panelsAdded;
    return HandleOf<HostRibbonPanel>(AddChild(category, name, title));
}

HostRibbonPanel ShellFakeHost::HostRibbonFindPanel(HostRibbonCategory category,
                                                   const wchar_t* name) {
    return HandleOf<HostRibbonPanel>(Node(category)->Child(Text(name)));
}

HostRibbonElement ShellFakeHost::HostRibbonAddElement(HostRibbonPanel panel, int type,
                                                      const wchar_t* name, const wchar_t* title,
                                                      int) {
    ++elementsAdded;
    FakeRibbonNode* element = AddChild(panel, name, title);
    element->type = type;
    return HandleOf<HostRibbonElement>(element);
}

HostRibbonElement ShellFakeHost::HostRibbonFindElement(HostRibbonPanel panel, const wchar_t* name) {
    return HandleOf<HostRibbonElement>(Node(panel)->Child(Text(name)));
}

HostRibbonItem ShellFakeHost::HostRibbonAddSubItem(HostRibbonElement element, int,
                                                   const wchar_t* name, const wchar_t* title,
                                                   int position, int, int, int) {
    FakeRibbonNode* entry = AddChild(element, name, title);
    entry->position = position;
    return HandleOf<HostRibbonItem>(entry);
}

void ShellFakeHost::HostRibbonSetExecuteProc(HostRibbonItem item, HostRibbonExecuteProc proc) {
    Node(item)->execute = proc;
}

void ShellFakeHost::HostRibbonSetEnableProc(HostRibbonItem item, HostRibbonEnableProc proc) {
    Node(item)->enable = proc;
}

void ShellFakeHost::HostRibbonSetKeyTip(HostRibbonItem item, const wchar_t* text) {
    Node(item)->keyTip = Text(text);
}

void ShellFakeHost::HostRibbonSetTooltip(HostRibbonItem item, const wchar_t* text) {
    Node(item)->tooltip = Text(text);
}

void ShellFakeHost::HostRibbonSetImages(HostRibbonItem item, const wchar_t* largeName,
                                        const wchar_t* smallName) {
    Node(item)->largeImage = Text(largeName);
    Node(item)->smallImage = Text(smallName);
}

HostRibbonButton ShellFakeHost::HostRibbonItemGetButton(HostRibbonItem item) {
    return reinterpret_cast<HostRibbonButton>(item);
}

void ShellFakeHost::HostPrefSetInt(const wchar_t* section, const wchar_t* key, int value) {
    intPrefs[{section, key}] = value;
}

void ShellFakeHost::HostPrefSetString(const wchar_t* section, const wchar_t* key,
                                      const wchar_t* value) {
    stringPrefs[{section, key}] = value;
}

int ShellFakeHost::HostPrefGetInt(const wchar_t* section, const wchar_t* key) {
    const auto found = intPrefs.find({section, key});
    return found != intPrefs.end() ? found->second : 0;
}

void ShellFakeHost::HostPrefGetString(const wchar_t* section, const wchar_t* key,
                                      HostWideString out) {
    const auto found = stringPrefs.find({section, key});
    W(out) = found != stringPrefs.end() ? found->second : L"";
}

HostBubbleSource ShellFakeHost::HostBubbleCreate() {
    ++liveBubbleSources;
    return reinterpret_cast<HostBubbleSource>(static_cast<uintptr_t>(0x3000 + liveBubbleSources));
}

void ShellFakeHost::HostBubbleShow(HostBubbleSource, uint32_t pluginId, int, const wchar_t* text,
                                   int milliseconds, int kind, int) {
    bubbles.push_back({Text(text), pluginId, milliseconds, kind});
}

void ShellFakeHost::HostBubbleRegister(HostBubbleSource source, HostBubbleRecord* record) {
    bubbleRecords.emplace_back(source, record);
}

void ShellFakeHost::HostBubbleUnregister(HostBubbleSource source, HostBubbleRecord* record) {
    std::erase(bubbleRecords, std::make_pair(source, record));
}

void ShellFakeHost::NotifyBubbles(int ready) {
    const auto records = bubbleRecords;
    for (const auto& [source, record] : records) {
        const auto notify = reinterpret_cast<HostBubbleNotifyFn>(record->word(kBubbleNotify));
        notify(record->word(kBubbleClientData), ready);
    }
}

int ShellFakeHost::LoginGetState(HostExtTable, const wchar_t*) {
    return signedIn ? 2 : 1;
}

int ShellFakeHost::LoginShowSignIn(HostExtTable, const wchar_t* text, int) {
    signInTexts.push_back(Text(text));
    if (!signInShows)
        return 0;
    if (signInSignsIn)
        signedIn = true;
    return 1;
}

int ShellFakeHost::LoginHasWindow(HostExtTable, HostWindow window) {
    hasWindowCalls.push_back(window);
    return hasWindow;
}

void ShellFakeHost::NDXFormFieldGetFullName(NdxFormField field, HostWideString out) {
    W(out) = reinterpret_cast<FakeFormField*>(field)->name;
}

void ShellFakeHost::NDXFormFieldGetValue(NdxFormField field, HostWideString out) {
    W(out) = reinterpret_cast<FakeFormField*>(field)->value;
}

void ShellFakeHost::HostAppShowPane(const char* paneName, int show) {
    FakeHost::HostAppShowPane(paneName, show);
    for (const auto& [window, record] : paneRecords) {
        if (window != mainWindow)
            continue;
        const auto name = reinterpret_cast<HostPaneNameFn>(record->word(kPaneGetName));
        if (std::string(name(record->word(kPaneClientData))) != paneName)
            continue;
        bool& shown = paneShown[record];
        if (show != 0) {
            const auto create = reinterpret_cast<HostPaneCreateFn>(record->word(kPaneCreateWindow));
            paneWindows.push_back(create(record->word(kPaneClientData), paneParent));
        } else if (shown) {
            const auto closed = reinterpret_cast<HostPaneClosedFn>(record->word(kPaneClosed));
            closed(record->word(kPaneClientData));
        }
        shown = show != 0;
        return;
    }
}
