// ShellFakeHost: a FakeHost with the parts of an editor that the plug-in's shell meets: a ribbon
// per frame, registered task panes, preferences, a notification surface, the "login" table and
// form fields.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fake_host.h"

struct FakeRibbonNode {
    std::wstring name;
    std::wstring title;
    int type = 0;
    int position = -1;
    std::wstring tooltip;
    std::wstring keyTip;
    std::wstring largeImage;
    std::wstring smallImage;
    HostRibbonExecuteProc execute = nullptr;
    HostRibbonEnableProc enable = nullptr;
    std::vector<std::unique_ptr<FakeRibbonNode>> children;

    FakeRibbonNode* Child(const std::wstring& childName) const;
};

struct FakeFormField {
    std::wstring name;
    std::wstring value;
};

class ShellFakeHost : public FakeHost {
  public:
    ShellFakeHost();

    // The ribbon bar of a frame (made on first use unless `noRibbon`).
    FakeRibbonNode& Bar(HostFrame frame);
    // The node at bar / category / panel / element [/ entry] by names; null when missing.
    FakeRibbonNode* Find(HostFrame frame, std::initializer_list<std::wstring> path);
    // Adds nodes along a path, as a host whose ribbon already holds them.
    FakeRibbonNode& Make(HostFrame frame, std::initializer_list<std::wstring> path);

    bool noRibbon = false;
    std::map<HostFrame, std::unique_ptr<FakeRibbonNode>> ribbons;
    int categoriesAdded = 0;
    int panelsAdded = 0;
    int elementsAdded = 0;

    HostWindow mainWindow = reinterpret_cast<HostWindow>(0x1000);
    // Pane records with the main window current when they were registered. Showing a pane asks
    // its record for the window (parent `paneParent`); hiding a shown one reports the closing.
    std::vector<std::pair<HostWindow, HostPaneRecord*>> paneRecords;
    HostWindow paneParent = reinterpret_cast<HostWindow>(0x4000);
    std::map<HostPaneRecord*, bool> paneShown;
    std::vector<HostWindow> paneWindows;  // what the records' window callbacks gave
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> stringPrefs;
    std::map<std::pair<std::wstring, std::wstring>, int> intPrefs;
    bool channelPackage = false;

    // The "login" table: the state, what the sign-in window does, the sign-up answer.
    bool signedIn = false;
    bool signInShows = true;    // LoginShowSignIn answers that it showed
    bool signInSignsIn = true;  // and the user signs in there
    int hasWindow = 0;          // what LoginHasWindow answers
    std::vector<std::wstring> signInTexts;
    std::vector<HostWindow> hasWindowCalls;

    // The notification surface.
    std::vector<std::pair<HostBubbleSource, HostBubbleRecord*>> bubbleRecords;
    struct Bubble {
        std::wstring text;
        uint32_t pluginId;
        int milliseconds;
        int style;
    };
    std::vector<Bubble> bubbles;
    int liveBubbleSources = 0;

    // Calls the notify word of every registered bubble record.
    void NotifyBubbles(int ready);

    // Ribbon
    HostRibbonBar HostRibbonGetBar(HostFrame frame) override;
    HostRibbonCategory HostRibbonAddCategory(HostRibbonBar bar, const wchar_t* name,
                                             const wchar_t* title) override;
    HostRibbonCategory HostRibbonFindCategory(HostRibbonBar bar, const wchar_t* name) override;
    HostRibbonPanel HostRibbonAddPanel(HostRibbonCategory category, const wchar_t* name,
                                       const wchar_t* title, int flags) override;
    HostRibbonPanel HostRibbonFindPanel(HostRibbonCategory category, const wchar_t* name) override;
    HostRibbonElement HostRibbonAddElement(HostRibbonPanel panel, int type, const wchar_t* name,
                                           const wchar_t* title, int flags) override;
    HostRibbonElement HostRibbonFindElement(HostRibbonPanel panel, const wchar_t* name) override;
    HostRibbonItem HostRibbonAddSubItem(HostRibbonElement element, int a, const wchar_t* name,
                                        const wchar_t* title, int position, int b, int c,
                                        int d) override;
    void HostRibbonSetExecuteProc(HostRibbonItem item, HostRibbonExecuteProc proc) override;
    void HostRibbonSetEnableProc(HostRibbonItem item, HostRibbonEnableProc proc) override;
    void HostRibbonSetKeyTip(HostRibbonItem item, const wchar_t* text) override;
    void HostRibbonSetTooltip(HostRibbonItem item, const wchar_t* text) override;
    void HostRibbonSetImages(HostRibbonItem item, const wchar_t* largeName,
                             const wchar_t* smallName) override;
    HostRibbonButton HostRibbonItemGetButton(HostRibbonItem item) override;

    // Application
    HostWindow HostAppGetMainWindow() override { return mainWindow; }
    void HostAppRegisterPane(HostPaneRecord* record) override {
        paneRecords.emplace_back(mainWindow, record);
    }
    void HostAppShowPane(const char* paneName, int show) override;
    int HostAppIsChannelPackage() override { return channelPackage ? 1 : 0; }
    void HostPrefSetInt(const wchar_t* section, const wchar_t* key, int value) override;
    void HostPrefSetString(const wchar_t* section, const wchar_t* key,
                           const wchar_t* value) override;
    int HostPrefGetInt(const wchar_t* section, const wchar_t* key) override;
    void HostPrefGetString(const wchar_t* section, const wchar_t* key, HostWideString out) override;

    // Notifications
    HostBubbleSource HostBubbleCreate() override;
    void HostBubbleShow(HostBubbleSource source, uint32_t pluginId, int a, const wchar_t* text,
                        int milliseconds, int kind, int b) override;
    void HostBubbleRegister(HostBubbleSource source, HostBubbleRecord* record) override;
    void HostBubbleUnregister(HostBubbleSource source, HostBubbleRecord* record) override;

    // The "login" table
    int LoginGetState(HostExtTable table, const wchar_t* baseAddress) override;
    int LoginShowSignIn(HostExtTable table, const wchar_t* text, int flags) override;
    int LoginHasWindow(HostExtTable table, HostWindow window) override;

    // Form fields: handles are FakeFormField pointers.
    void NDXFormFieldGetFullName(NdxFormField field, HostWideString out) override;
    void NDXFormFieldGetValue(NdxFormField field, HostWideString out) override;
};
