// FakeHost: an in-memory editor for tests of the plug-in logic. A document is a record whose pages
// hold the types of their content objects, lines of text and form controls. Characters of a page
// are numbered line after line with no separator; character c of line l stands in the box
// (10c, 700 - 20l, 10c + 10, 710 - 20l). Every object the plug-in makes through a ...New
// operation is counted until it is destroyed, and every dictionary keeps its entries in the order
// they were set, so tests can read back exactly what the plug-in wrote. Strings, preferences,
// event registrations, the ribbon, task panes, the "login" table, progress windows and the OCR
// extension behave as a host's would; knobs make single operations fail.
#pragma once

#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "app/platform_services.h"
#include "fake_platform.h"
#include "host_api_defaults.h"

// A PDF object of the fake's dictionary model.
struct FakeObject {
    enum class Kind { kNumber, kString, kName, kArray, kDict, kRef };
    Kind kind = Kind::kDict;
    double number = 0;
    std::string text;  // string bytes or name
    std::vector<FakeObject*> items;
    std::vector<std::pair<std::string, FakeObject*>> entries;  // in the order set
    FakeObject* target = nullptr;                              // of a reference
    std::string label;  // how a reference to this object reads in Describe

    FakeObject* Get(const std::string& key) const;
};

// A dictionary's entries in order: "/Type /Annot /Rect [1 2 3 4] /NM (name) /P @page0".
std::string Describe(const FakeObject& dict);

struct FakeLine {
    std::wstring text;
    bool hasRects = true;  // false: matches in this line have no rectangles
};

// A form control, which is its own field.
struct FakeControl {
    std::wstring name;
    int type = kNdxControlTextField;
    std::wstring value;
    NdxRect rect{0, 0, 0, 0};
};

struct FakeAnnot {
    FakeObject* dict = nullptr;
    bool alive = true;
};

struct FakePage {
    std::vector<int> objects;  // NdxPageObjectType of each content object
    std::vector<FakeLine> lines;
    std::vector<FakeControl> controls;
    bool available = true;    // false: the editor gives no PDF page for it
    bool startFails = false;  // the finder refuses to start on this page
    std::optional<NdxRect> mediaBox = NdxRect{0, 0, 600, 800};  // none: inherited
    NdxRect visible{0, 0, 600, 800};
    // Filled by the host:
    int index = 0;
    bool parsed = false;
    FakeObject* dict = nullptr;
    std::vector<FakeAnnot*> annots;
};

struct FakeDoc {
    std::wstring path;
    bool modified = false;
    bool temporary = false;
    bool hasPdf = true;
    bool faulty = false;  // asking whether it is modified throws, as a failing host call may
    bool xfa = false;     // its catalogue's form has an XFA entry
    uint32_t permissions = kHostPermPrint | kHostPermModify | kHostPermCopy | kHostPermAnnotate;
    std::optional<std::map<std::string, std::string>> info = std::map<std::string, std::string>{};
    std::vector<FakePage> pages;
    bool hasView = true;
    bool hasTool = true;
    bool hasForm = true;       // the document has a form environment
    bool hasInterForm = true;  // ... and the environment an interactive form
    int currentPage = 0;
};

// A document of one empty page stored at `path`.
inline FakeDoc FileDoc(std::wstring path) {
    FakeDoc doc;
    doc.path = std::move(path);
    doc.pages.resize(1);
    return doc;
}

// The host's account behind the "login" table, when FakeHost::loginTable is set.
struct FakeAccount {
    bool signedIn = false;  // LoginGetState answers 2 when set, else 0
    // LoginGetToken's token by base address; an address without one fails with an empty token.
    std::map<std::wstring, std::wstring> tokens;
    bool hasUser = true;  // LoginGetUserInfo succeeds
    std::wstring email, userId, firstName, lastName;
    int signInAnswer = 0;                     // what LoginShowSignIn returns
    bool signInSignsIn = true;                // a non-zero answer signs the user in
    int hasWindow = 0;                        // what LoginHasWindow answers
    std::vector<std::wstring> signInTexts;    // texts of LoginShowSignIn
    std::vector<HostWindow> hasWindowCalls;   // windows asked of LoginHasWindow
    std::vector<std::wstring> stateRequests;  // base addresses asked of LoginGetState
    std::vector<std::wstring> tokenRequests;  // base addresses asked of LoginGetToken
    HostLoginDomainCallback domainCallback = nullptr;
};

// One HostAppReportUsage call: its texts, and whether the unused arguments were null.
struct FakeUsageReport {
    std::wstring name, type, details, module, version, extra1, extra2;
    bool gapsNull = false;
    int last = -1;
};

// A selection the text select tool holds: rectangles on one page, or ranges per page.
struct FakeSelection {
    int page = -1;
    std::vector<NdxRect> rects;
    std::map<int, std::pair<int32_t, int32_t>> ranges;
};

struct FakeProgress {
    int flag = -1;
    std::wstring text;
    int low = 0;
    int high = 0;
    std::vector<int> positions;
    int pumps = 0;
    bool destroyed = false;
};

struct FakeRibbonNode {
    std::wstring name;
    std::wstring title;
    int type = 0;
    int position = -1;
    HostRibbonExecuteProc execute = nullptr;
    HostRibbonEnableProc enable = nullptr;
    std::vector<std::unique_ptr<FakeRibbonNode>> children;

    FakeRibbonNode* Child(const std::wstring& childName) const;
};

class FakeHost : public HostApiDefaults {
  private:
    // Handles are pointers to the fake's own records.
    static std::wstring& W(HostWideString s) { return *reinterpret_cast<std::wstring*>(s); }
    static std::string& B(HostByteString s) { return *reinterpret_cast<std::string*>(s); }
    static FakeAnnot* A(const void* annot) {
        return static_cast<FakeAnnot*>(const_cast<void*>(annot));
    }
    static FakeControl* C(const void* control) {
        return static_cast<FakeControl*>(const_cast<void*>(control));
    }
    static FakeProgress& P(HostProgress progress) {
        return *reinterpret_cast<FakeProgress*>(progress);
    }
    static FakePage& PdfPage(NdxPage page) { return *reinterpret_cast<FakePage*>(page); }
    template <typename Handle>
    static Handle H(const void* pointer) {
        return static_cast<Handle>(const_cast<void*>(pointer));
    }

  public:
    FakeHost();
    ~FakeHost() override;

    // Opens a document and makes it the active one; the handle stays valid until the test ends.
    HostDoc Open(FakeDoc doc);
    HostDoc OpenPdf(FakeDoc doc, std::wstring path = L"/docs/test.pdf") {
        doc.path = std::move(path);
        return Open(std::move(doc));
    }
    // Closes a document as the editor does: the closing hooks run, then another becomes active.
    void Close(HostDoc doc);
    FakeDoc& Doc(HostDoc doc) { return *reinterpret_cast<FakeDoc*>(doc); }
    FakePage& Page(HostDoc doc, int index) { return Doc(doc).pages.at(index); }
    // The user deletes an annotation in the editor.
    void UserDeletes(HostDoc doc, int page, std::size_t position);
    // The user draws a Redact annotation of their own.
    void UserRedacts(HostDoc doc, int page, const std::string& uniqueName);
    // Objects made through ...New and not destroyed or handed over.
    int LiveHandles() const;
    // Runs the document saved hooks as the editor does after a save.
    void FireDidSave(HostDoc doc, int result);
    // The progress window that is up, or null.
    FakeProgress* Bar();
    // The ribbon bar of a frame (made on first use unless `noRibbon`).
    FakeRibbonNode& Ribbon(HostFrame frame);
    // The node at bar / category / panel / element [/ entry] by names; null when missing.
    FakeRibbonNode* Find(HostFrame frame, std::initializer_list<std::wstring> path);
    // Adds nodes along a path, as a host whose ribbon already holds them.
    FakeRibbonNode& Make(HostFrame frame, std::initializer_list<std::wstring> path);
    // Calls the notify word of every registered bubble record.
    void NotifyBubbles(int ready);

    // Application and account
    std::filesystem::path userData;
    std::wstring language = L"en-US";
    HostDoc active = nullptr;
    HostWindow mainWindow = reinterpret_cast<HostWindow>(0x1000);
    std::vector<HostDocEventRecord*> docEventRecords;
    std::vector<HostAppEventRecord*> appEventRecords;
    std::vector<std::pair<std::string, int>> paneCalls;
    std::vector<std::wstring> messages;
    int liveStrings = 0;
    int liveResources = 0;
    std::wstring loginServer;  // answered by LoginGetServerAddress when `loginTable` is found
    bool loginTable = false;
    FakeAccount account;
    bool channelPackage = false;
    // Host preferences and plug-in settings by (section, key).
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> preferences;
    std::map<std::pair<std::wstring, std::wstring>, int> intPrefs;
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> pluginSettings;
    std::vector<FakeUsageReport> usageReports;

    // Ribbon, task panes and notifications. Pane records keep the main window current when they
    // were registered. Showing a pane asks its record for the window (parent `paneParent`);
    // hiding a shown one reports the closing.
    bool noRibbon = false;
    std::map<HostFrame, std::unique_ptr<FakeRibbonNode>> ribbons;
    int categoriesAdded = 0;
    int panelsAdded = 0;
    int elementsAdded = 0;
    std::vector<std::pair<HostWindow, HostPaneRecord*>> paneRecords;
    HostWindow paneParent = reinterpret_cast<HostWindow>(0x4000);
    std::map<HostPaneRecord*, bool> paneShown;
    std::vector<std::pair<HostBubbleSource, HostBubbleRecord*>> bubbleRecords;
    struct Bubble {
        std::wstring text;
        uint32_t pluginId;
        int milliseconds;
        int style;
    };
    std::vector<Bubble> bubbles;

    // Documents: knobs and records
    bool refuseAdd = false;
    bool listInsertIgnored = false;
    bool applyFails = false;
    bool refuseValue = false;
    std::deque<int> messageBoxAnswers;       // an empty queue answers Cancel
    std::vector<std::wstring> messageBoxes;  // title, then text, of each box shown
    std::vector<std::string> calls;          // notable operations in call order
    std::optional<FakeSelection> selection;
    std::vector<std::pair<int, int>> scrolls;
    std::vector<std::vector<int>> repaints;  // left, top, right, bottom
    std::vector<std::tuple<int, int, std::wstring>> replacements;

    // Files, progress and OCR: knobs and records. Files opened hidden are looked up by their
    // bytes in `disk`, so a test can tell which file the plug-in copied and opened.
    std::vector<std::unique_ptr<FakeProgress>> progressWindows;
    bool refuseProgress = false;
    int cancelAtPump = -1;  // IsCancelled answers yes once this many pumps were made
    bool refuseSave = false;
    bool refuseSaveAs = false;
    std::vector<std::wstring> savedAs;
    std::vector<HostSaveAsOptions> saveAsOptions;
    int liveEncoders = 0;
    int liveStringArrays = 0;
    std::map<std::string, FakeDoc> disk;
    bool copyHasPdf = true;
    bool refuseFlattener = false;
    std::vector<HostDoc> hiddenDocs;
    std::vector<HostDoc> closedDocs;
    std::vector<std::pair<int, int>> textLineArgs;
    std::vector<std::string> flattenerCalls;
    std::vector<std::string> savedToFile;  // path of each NDXDocSaveToFile
    bool ocrTable = false;
    bool ocrDialogFunction = true;
    bool ocrPageFunction = true;
    bool ocrDialogConfirms = true;
    int ocrDialogs = 0;
    std::vector<int> recognisedPages;
    std::wstring ocrLanguage;  // of the last recognised page

    // Strings
    HostWideString HostWideStringNew() override {
        ++liveStrings;
        return reinterpret_cast<HostWideString>(new std::wstring());
    }
    void HostWideStringDelete(HostWideString str) override {
        --liveStrings;
        delete &W(str);
    }
    int HostWideStringGetLength(HostWideString str) override {
        return static_cast<int>(W(str).size());
    }
    int HostWideStringCompareText(HostWideString str, const wchar_t* text) override {
        return W(str).compare(text);
    }
    void HostWideStringSet(HostWideString str, const wchar_t* text) override { W(str) = text; }
    const wchar_t* HostWideStringData(HostWideString str) override { return W(str).c_str(); }
    HostByteString HostByteStringNew() override {
        ++liveStrings;
        return reinterpret_cast<HostByteString>(new std::string());
    }
    void HostByteStringDelete(HostByteString str) override {
        --liveStrings;
        delete &B(str);
    }
    int HostByteStringGetLength(HostByteString str) override {
        return static_cast<int>(B(str).size());
    }
    const char* HostByteStringData(HostByteString str) override { return B(str).c_str(); }
    void HostByteStringSet(HostByteString str, const char* text) override { B(str) = text; }
    void HostByteStringAppendText(HostByteString str, const char* text) override { B(str) += text; }
    int HostByteStringEquals(HostByteString a, HostByteString b) override {
        return B(a) == B(b) ? 1 : 0;
    }
    void HostTextToPdfString(const wchar_t* text, int length, int, HostByteString out) override;

    // Containers
    HostMap HostMapNew(int) override { return maps_.Add<HostMap>(); }
    void HostMapDestroy(HostMap map) override { maps_.Erase(map); }
    void HostMapSet(HostMap map, const void* key, void* value) override {
        (*maps_.Find(map))[key] = value;
    }
    HostPtrArray HostPtrArrayNew() override { return ptrArrays_.Add<HostPtrArray>(); }
    void HostPtrArrayDestroy(HostPtrArray array) override { ptrArrays_.Erase(array); }
    int HostPtrArrayGetCount(HostPtrArray array) override {
        return static_cast<int>(ptrArrays_.Find(array)->size());
    }
    void* HostPtrArrayGetAt(HostPtrArray array, int index) override {
        return ptrArrays_.Find(array)->at(static_cast<std::size_t>(index));
    }
    void HostPtrArrayAdd(HostPtrArray array, void* element) override {
        ptrArrays_.Find(array)->push_back(element);
    }
    NdxRectArray NDXRectArrayNew() override { return rectArrays_.Add<NdxRectArray>(); }
    void NDXRectArrayDestroy(NdxRectArray array) override { rectArrays_.Erase(array); }
    int NDXRectArrayGetCount(NdxRectArray array) override {
        return static_cast<int>(rectArrays_.Find(array)->size());
    }
    NdxRect NDXRectArrayGetAt(NdxRectArray array, int index) override {
        return rectArrays_.Find(array)->at(static_cast<std::size_t>(index));
    }
    void NDXRectArrayAdd(NdxRectArray array, float l, float b, float r, float t) override {
        rectArrays_.Find(array)->push_back(NdxRect{l, b, r, t});
    }
    void NDXRectInflate(NdxRect* rect, float l, float b, float r, float t) override {
        *rect = NdxRect{rect->left - l, rect->bottom - b, rect->right + r, rect->top + t};
    }
    HostStringArray HostStringArrayNew() override {
        ++liveStringArrays;
        return stringArrays_.Add<HostStringArray>();
    }
    void HostStringArrayDestroy(HostStringArray array) override {
        --liveStringArrays;
        stringArrays_.Erase(array);
    }
    void HostStringArrayGet(HostStringArray array, int index, HostWideString out) override {
        W(out) = stringArrays_.Find(array)->at(static_cast<std::size_t>(index));
    }
    int HostStringArrayCount(HostStringArray array) override {
        return static_cast<int>(stringArrays_.Find(array)->size());
    }
    HostBase64Encoder HostBase64EncoderNew(int paddingChar) override;
    void HostBase64EncoderDestroy(HostBase64Encoder) override { --liveEncoders; }
    void HostBase64Encode(HostBase64Encoder encoder, const void* data, int64_t size,
                          HostByteString out) override;

    // Application
    void HostAppGetUserDataFolder(HostWideString out) override;
    void HostAppGetLanguage(HostWideString out) override { W(out) = language; }
    void HostAppGetVersion(HostWideString out) override { W(out) = L"1.2.3"; }
    HostResources HostResourcesNew(const wchar_t*) override {
        ++liveResources;
        return reinterpret_cast<HostResources>(new int(0));
    }
    void HostResourcesDestroy(HostResources resources) override {
        --liveResources;
        delete reinterpret_cast<int*>(resources);
    }
    HostDoc HostAppGetActiveDoc() override { return active; }
    int HostAppGetDocCount() override { return static_cast<int>(open_.size()); }
    HostDoc HostAppGetDocByIndex(int index) override {
        return index >= 0 && index < static_cast<int>(open_.size())
                   ? open_[static_cast<std::size_t>(index)]
                   : nullptr;
    }
    void HostAppRegisterDocEvents(HostDocEventRecord* record) override {
        docEventRecords.push_back(record);
    }
    void HostAppUnregisterDocEvents(HostDocEventRecord* record) override {
        docEventRecords.erase(std::remove(docEventRecords.begin(), docEventRecords.end(), record),
                              docEventRecords.end());
    }
    void HostAppRegisterAppEvents(HostAppEventRecord* record) override {
        appEventRecords.push_back(record);
    }
    HostWindow HostAppGetMainWindow() override { return mainWindow; }
    void HostAppRegisterPane(HostPaneRecord* record) override {
        paneRecords.emplace_back(mainWindow, record);
    }
    void HostAppShowPane(const char* paneName, int show) override;
    int HostAppIsChannelPackage() override { return channelPackage ? 1 : 0; }
    void HostMessageShow(const wchar_t* text, int, int, const wchar_t*, int, int) override {
        messages.emplace_back(text);
    }
    int HostMessageBox(const wchar_t* text, int buttons, const wchar_t* title, int* check,
                       HostWindow parent) override;
    HostTool HostAppGetToolByName(const char* name) override {
        return std::string(name) == "Hand" ? H<HostTool>(&handTool_) : nullptr;
    }
    void HostAppSetCurrentTool(HostTool, int persistent) override {
        calls.push_back("SetCurrentTool:" + std::to_string(persistent));
    }
    void HostAppGetName(HostByteString out) override { B(out) = "FakeEditor"; }
    void HostAppGetType(HostByteString out) override { B(out) = "editor"; }
    void HostPrefSetInt(const wchar_t* section, const wchar_t* key, int value) override {
        intPrefs[{section, key}] = value;
    }
    int HostPrefGetInt(const wchar_t* section, const wchar_t* key) override {
        const auto found = intPrefs.find({section, key});
        return found != intPrefs.end() ? found->second : 0;
    }
    void HostPrefSetString(const wchar_t* section, const wchar_t* key,
                           const wchar_t* value) override {
        preferences[{section, key}] = value;
    }
    void HostPrefGetString(const wchar_t* section, const wchar_t* key,
                           HostWideString out) override {
        const auto found = preferences.find({section, key});
        W(out) = found != preferences.end() ? found->second : std::wstring();
    }
    void HostPluginSettingSet(const wchar_t* section, const wchar_t* key,
                              const wchar_t* value) override {
        pluginSettings[{section, key}] = value;
    }
    void HostPluginSettingGet(const wchar_t* section, const wchar_t* key, HostWideString out,
                              const wchar_t* defaultValue) override {
        const auto found = pluginSettings.find({section, key});
        W(out) = found != pluginSettings.end() ? found->second : std::wstring(defaultValue);
    }
    void HostAppReportUsage(HostWideString name, HostWideString unused1, HostWideString unused2,
                            HostWideString type, HostWideString unused3, HostWideString unused4,
                            HostWideString details, HostWideString module, HostWideString version,
                            HostWideString extra1, HostWideString extra2, int last) override;

    // Extensions: the "login" table and OCR
    HostExtTable HostExtensionFind(const char* name, int version) override;
    HostFunction HostExtensionGetFunction(HostExtTable table, int index) override;
    void LoginGetServerAddress(HostExtTable, HostWideString out) override { W(out) = loginServer; }
    int LoginGetToken(HostExtTable table, const wchar_t* baseAddress, const wchar_t* text,
                      HostWideString token) override;
    int LoginGetUserInfo(HostExtTable table, const wchar_t* baseAddress, HostWideString email,
                         HostWideString userId, HostWideString firstName,
                         HostWideString lastName) override;
    int LoginGetState(HostExtTable, const wchar_t* baseAddress) override {
        account.stateRequests.emplace_back(baseAddress);
        return account.signedIn ? 2 : 0;
    }
    int LoginShowSignIn(HostExtTable table, const wchar_t* text, int flags) override;
    int LoginHasWindow(HostExtTable, HostWindow window) override {
        account.hasWindowCalls.push_back(window);
        return account.hasWindow;
    }
    void LoginRegisterDomainCallback(HostExtTable, HostLoginDomainCallback callback) override {
        account.domainCallback = callback;
    }
    int OcrRecognizePage(HostExtTable table, NdxPage page, HostOcrOptions* options,
                         int flags) override;
    int OcrShowDialog(HostExtTable table, HostWindow parent, HostOcrOptions* options,
                      HostOcrDialogCallback* callback) override;

    // Ribbon and notifications
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
    HostRibbonButton HostRibbonItemGetButton(HostRibbonItem item) override {
        return reinterpret_cast<HostRibbonButton>(item);
    }
    HostBubbleSource HostBubbleCreate() override {
        static uintptr_t sources = 0x3000;
        return reinterpret_cast<HostBubbleSource>(++sources);
    }
    void HostBubbleShow(HostBubbleSource source, uint32_t pluginId, int a, const wchar_t* text,
                        int milliseconds, int kind, int b) override;
    void HostBubbleRegister(HostBubbleSource source, HostBubbleRecord* record) override {
        bubbleRecords.emplace_back(source, record);
    }
    void HostBubbleUnregister(HostBubbleSource source, HostBubbleRecord* record) override {
        std::erase(bubbleRecords, std::make_pair(source, record));
    }

    // Progress window
    HostProgress HostProgressNew(HostWindow parent, int flag) override;
    void HostProgressSetText(HostProgress progress, const wchar_t* text) override {
        P(progress).text = text;
    }
    void HostProgressSetRange(HostProgress progress, int low, int high) override {
        P(progress).low = low;
        P(progress).high = high;
    }
    void HostProgressSetPos(HostProgress progress, int pos) override {
        P(progress).positions.push_back(pos);
    }
    void HostProgressPump(HostProgress progress) override { ++P(progress).pumps; }
    int HostProgressIsCancelled(HostProgress progress) override {
        return P(progress).pumps == cancelAtPump ? 1 : 0;
    }
    void HostProgressSetCancelled(HostProgress progress, int) override {
        P(progress).text += L" (cancel seen)";
    }
    void HostProgressDestroy(HostProgress progress) override { P(progress).destroyed = true; }

    // Documents, views and selection
    NdxDoc HostDocGetPdfDoc(HostDoc doc) override {
        return Doc(doc).hasPdf ? reinterpret_cast<NdxDoc>(doc) : nullptr;
    }
    int HostDocIsModified(HostDoc doc) override {
        if (Doc(doc).faulty)
            throw std::bad_alloc();
        return Doc(doc).modified ? 1 : 0;
    }
    int HostDocIsTemporary(HostDoc doc) override { return Doc(doc).temporary ? 1 : 0; }
    uint32_t HostDocGetPermissions(HostDoc doc) override { return Doc(doc).permissions; }
    void HostDocGetFilePath(HostDoc doc, HostWideString out) override { W(out) = Doc(doc).path; }
    void HostDocGetFileName(HostDoc doc, HostWideString out) override;
    int HostDocSave(HostDoc doc, int a, int b, int c, int d) override;
    int HostDocSaveAs(HostDoc doc, const wchar_t* path, int a, int b,
                      const HostSaveAsOptions* options) override;
    void HostDocClose(HostDoc doc, int, int, int) override {
        closedDocs.push_back(doc);
        Close(doc);
    }
    HostDoc HostDocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions* options) override;
    void HostDocSetChanged(HostDoc doc) override {
        Doc(doc).modified = true;
        calls.push_back("SetChanged");
    }
    HostDocView HostDocGetView(HostDoc doc) override {
        FakeDoc* pdf = H<FakeDoc*>(doc);
        return pdf != nullptr && pdf->hasView ? H<HostDocView>(pdf) : nullptr;
    }
    HostTextSelectTool HostDocGetTextSelectTool(HostDoc doc) override {
        FakeDoc* pdf = H<FakeDoc*>(doc);
        return pdf != nullptr && pdf->hasTool ? H<HostTextSelectTool>(pdf) : nullptr;
    }
    void HostDocTouchPage(HostDoc, int pageIndex) override {
        calls.push_back("TouchPage:" + std::to_string(pageIndex));
    }
    int HostDocIsAnnotAlive(HostDoc, HostAnnot annot) override { return A(annot)->alive ? 1 : 0; }
    HostFormEnv HostDocGetInterForm(HostDoc doc) override {
        FakeDoc* pdf = H<FakeDoc*>(doc);
        return pdf != nullptr && pdf->hasForm ? H<HostFormEnv>(pdf) : nullptr;
    }
    int HostDocReplaceText(HostDoc, int page, int ordinal, const wchar_t* text) override {
        replacements.emplace_back(page, ordinal, text);
        return 1;
    }
    HostPageView HostDocGetPageView(HostDoc doc, int pageIndex) override;
    void HostDocRefreshPageAnnots(HostDoc, int pageIndex, int flags) override {
        calls.push_back("RefreshPageAnnots:" + std::to_string(pageIndex) + ":" +
                        std::to_string(flags));
    }
    HostPageView HostDocViewGetPageView(HostDocView view, int pageIndex) override {
        return HostDocGetPageView(H<HostDoc>(view), pageIndex);
    }
    void HostDocViewGotoPage(HostDocView view, int pageIndex) override {
        static_cast<FakeDoc*>(static_cast<void*>(view))->currentPage = pageIndex;
        calls.push_back("GotoPage:" + std::to_string(pageIndex));
    }
    HostPageView HostDocViewGetCurrentPageView(HostDocView view) override {
        return HostDocViewGetPageView(view,
                                      static_cast<FakeDoc*>(static_cast<void*>(view))->currentPage);
    }
    void HostDocViewScrollTo(HostDocView, int x, int y) override { scrolls.emplace_back(x, y); }
    void HostDocViewInvalidateRect(HostDocView, int l, int t, int r, int b) override {
        repaints.push_back({l, t, r, b});
    }
    int HostPageViewCountAnnots(HostPageView page) override {
        return static_cast<int>(PageOf(page)->annots.size());
    }
    // Device space: twice the page's numbers.
    void HostPageViewPointToDevice(HostPageView, const NdxPoint* point, int* x, int* y) override {
        *x = static_cast<int>(point->x * 2);
        *y = static_cast<int>(point->y * 2);
    }
    NdxRect HostPageViewGetVisibleRect(HostPageView page) override { return PageOf(page)->visible; }
    HostAnnot HostPageViewGetAnnot(HostPageView page, int index) override;
    int HostPageViewDeleteAnnot(HostPageView page, HostAnnot annot) override;
    void HostPageViewUpdateAnnot(HostPageView, HostAnnot) override {
        calls.push_back("UpdateAnnot");
    }
    HostAnnot HostPageViewAddAnnot(HostPageView page, NdxObject dict, int index) override;
    int HostPageViewOwnsAnnot(HostPageView page, HostAnnot annot) override {
        const auto& annots = PageOf(page)->annots;
        return std::find(annots.begin(), annots.end(), A(annot)) != annots.end() ? 1 : 0;
    }
    NdxPage HostPageViewGetPage(HostPageView page) override {
        FakePage* fake = PageOf(page);
        return fake->available ? H<NdxPage>(fake) : nullptr;
    }
    void HostPageReloadAnnots(HostPageView page) override {
        calls.push_back("ReloadAnnots:" + std::to_string(PageOf(page)->index));
    }
    void HostTextSelectToolClear(HostTextSelectTool) override {
        selection.reset();
        calls.push_back("ClearSelection");
    }
    void HostTextSelectToolSelectRects(HostTextSelectTool, HostPageView page,
                                       NdxRectArray rects) override {
        selection = FakeSelection{PageOf(page)->index, *rectArrays_.Find(rects), {}};
    }
    void HostTextSelectToolSelectRanges(HostTextSelectTool tool, HostMap ranges) override;

    // PDF documents, pages and objects
    int NDXDocGetPageCount(NdxDoc doc) override {
        return static_cast<int>(reinterpret_cast<FakeDoc*>(doc)->pages.size());
    }
    NdxObject NDXDocGetInfo(NdxDoc doc) override {
        auto& info = reinterpret_cast<FakeDoc*>(doc)->info;
        return info ? reinterpret_cast<NdxObject>(&*info) : nullptr;
    }
    NdxObject NDXDocGetPage(NdxDoc doc, int pageIndex) override;
    void NDXDocSaveToFile(NdxDoc, const char* utf8Path, int a, int b) override {
        savedToFile.push_back(std::string(utf8Path) + ":" + std::to_string(a) + "," +
                              std::to_string(b));
    }
    NdxPage NDXPageNew() override { return tempPages_.Add<NdxPage>(); }
    void NDXPageDestroy(NdxPage page) override { tempPages_.Erase(page); }
    int NDXPageIsParsed(NdxPage page) override;
    void NDXPageLoad(NdxPage page, NdxDoc doc, NdxObject pageDict, int flags) override;
    void NDXPageParse(NdxPage page, NdxParseOptions options) override;
    int NDXPageCountObjects(NdxPage page) override {
        return PdfPage(page).parsed ? static_cast<int>(PdfPage(page).objects.size()) : 0;
    }
    NdxPosition NDXPageGetFirstObjectPos(NdxPage page) override {
        return PdfPage(page).parsed && !PdfPage(page).objects.empty()
                   ? reinterpret_cast<NdxPosition>(1)
                   : nullptr;
    }
    NdxPageObject NDXPageGetNextObject(NdxPage page, NdxPosition* position) override;
    int NDXPageObjectGetType(NdxPageObject object) override {
        return *reinterpret_cast<int*>(object);
    }
    void NDXPageGetTextLines(HostStringArray out, NdxDoc doc, NdxObject pageDict, int a,
                             int b) override;
    NdxParseOptions NDXParseOptionsNew(int, int, int, int) override {
        return parseOptions_.Add<NdxParseOptions>();
    }
    void NDXParseOptionsDestroy(NdxParseOptions options) override { parseOptions_.Erase(options); }
    int NDXObjectGetType(NdxObject object) override;
    void NDXObjectDestroy(NdxObject object) override;
    NdxObject NDXObjectGetDirect(NdxObject object) override;
    void NDXStringGetBytes(NdxObject string, HostByteString out) override {
        const FakeObject* fake = Object(string);
        B(out) = fake != nullptr ? fake->text : std::string();
    }
    NdxObject NDXArrayNew() override { return H<NdxObject>(NewObject(FakeObject::Kind::kArray)); }
    int NDXArrayCount(NdxObject array) override {
        return static_cast<int>(Object(array)->items.size());
    }
    float NDXArrayGetNumber(NdxObject array, int index) override;
    void NDXArrayAddNumber(NdxObject array, float value) override;
    NdxObject NDXDictNew() override;
    NdxObject NDXDictGet(NdxObject dict, const char* key) override {
        const FakeObject* fake = Object(dict);
        return fake != nullptr ? H<NdxObject>(fake->Get(key)) : nullptr;
    }
    void NDXDictGetString(NdxObject dict, const char* key, HostByteString out) override;
    void NDXDictSetObject(NdxObject dict, const char* key, NdxObject value, NdxDoc) override {
        SetEntry(dict, key, Object(value));
    }
    void NDXDictSetName(NdxObject dict, const char* key, const char* name) override {
        SetNew(dict, key, FakeObject::Kind::kName)->text = name;
    }
    void NDXDictSetString(NdxObject dict, const char* key, HostByteString value) override {
        SetNew(dict, key, FakeObject::Kind::kString)->text = B(value);
    }
    void NDXDictSetInteger(NdxObject dict, const char* key, int value) override {
        SetNew(dict, key, FakeObject::Kind::kNumber)->number = value;
    }
    void NDXDictSetReference(NdxObject dict, const char* key, NdxDoc, NdxObject target) override {
        SetNew(dict, key, FakeObject::Kind::kRef)->target = Object(target);
    }
    void NDXDictSetRect(NdxObject dict, const char* key, NdxRect rect) override {
        SetEntry(dict, key, NewRect(rect));
    }
    NdxFlattener NDXFlattenerNew(NdxDoc doc) override {
        flattenerCalls.push_back("new");
        return refuseFlattener ? nullptr : reinterpret_cast<NdxFlattener>(doc);
    }
    void NDXFlattenerAddPage(NdxFlattener flattener, NdxPage page, int a, int b) override;
    void NDXFlattenerDone(NdxFlattener) override { flattenerCalls.push_back("done"); }

    // Annotations and undo
    NdxAnnot NDXAnnotNew(NdxObject dict) override;
    NdxObject NDXAnnotGetDict(NdxAnnot annot) override { return H<NdxObject>(A(annot)->dict); }
    void NDXAnnotGetSubtype(NdxAnnot annot, HostByteString out) override {
        const FakeObject* subtype = A(annot)->dict->Get("Subtype");
        B(out) = subtype != nullptr ? subtype->text : std::string();
    }
    NdxRect NDXAnnotGetRect(NdxAnnot annot) override;
    NdxAnnotList NDXAnnotListGet(NdxPage page) override { return H<NdxAnnotList>(PageOf(page)); }
    NdxAnnot NDXAnnotListGetAt(NdxAnnotList list, int index) override {
        return H<NdxAnnot>(PageOf(list)->annots.at(static_cast<std::size_t>(index)));
    }
    int NDXAnnotListCount(NdxAnnotList list) override {
        return static_cast<int>(PageOf(list)->annots.size());
    }
    void NDXAnnotListInsert(NdxAnnotList list, int index, NdxAnnot annot) override;
    NdxAnnot NDXHostAnnotGetPdfAnnot(HostAnnot annot) override { return H<NdxAnnot>(annot); }
    HostUndoManager HostUndoGetManager() override { return H<HostUndoManager>(&undoManager_); }
    void HostUndoRecordAddAnnot(HostUndoManager, HostAnnot, int a, int b) override {
        calls.push_back("UndoAdd:" + std::to_string(a) + ":" + std::to_string(b));
    }
    void HostUndoRecordDeleteAnnot(HostUndoManager, HostAnnot, int a) override {
        calls.push_back("UndoDelete:" + std::to_string(a));
    }

    // Forms
    NdxFormField NDXInterFormGetField(NdxInterForm form, int index, const wchar_t* name) override;
    int NDXInterFormCountPageControls(NdxInterForm, NdxPage page) override {
        return static_cast<int>(PageOf(page)->controls.size());
    }
    NdxFormControl NDXInterFormGetPageControl(NdxInterForm, NdxPage page, int index) override {
        return H<NdxFormControl>(&PageOf(page)->controls.at(static_cast<std::size_t>(index)));
    }
    void NDXInterFormSetUpdateAP(NdxInterForm, int update) override {
        calls.push_back("SetUpdateAP:" + std::to_string(update));
    }
    void NDXFormFieldGetFullName(NdxFormField field, HostWideString out) override {
        W(out) = C(field)->name;
    }
    void NDXFormFieldGetValue(NdxFormField field, HostWideString out) override {
        W(out) = C(field)->value;
    }
    int NDXFormFieldSetValue(NdxFormField field, const wchar_t* value, int notify) override;
    int NDXFormControlGetType(NdxFormControl control) override { return C(control)->type; }
    NdxFormField NDXFormControlGetField(NdxFormControl control) override {
        return H<NdxFormField>(control);
    }
    void NDXFormControlGetRect(NdxFormControl control, NdxRect* out) override {
        *out = C(control)->rect;
    }
    NdxInterForm NDXInterFormFromEnvironment(HostFormEnv env) override {
        return static_cast<FakeDoc*>(static_cast<void*>(env))->hasInterForm ? H<NdxInterForm>(env)
                                                                            : nullptr;
    }

    // Text search
    NdxTextPage NDXTextPageNew(NdxPage page, int) override {
        return textPages_.Add<NdxTextPage>(TextPage{PageOf(page), false});
    }
    void NDXTextPageDestroy(NdxTextPage textPage) override { textPages_.Erase(textPage); }
    void NDXTextPageParse(NdxTextPage textPage) override {
        textPages_.Find(textPage)->parsed = true;
    }
    int NDXTextPageIsParsed(NdxTextPage textPage) override {
        return textPages_.Find(textPage)->parsed ? 1 : 0;
    }
    NdxTextFind NDXTextFindNew(NdxTextPage textPage) override {
        const TextPage* page = textPages_.Find(textPage);
        return page->parsed ? finders_.Add<NdxTextFind>(Finder{page->page, {}, -1}) : nullptr;
    }
    void NDXTextFindDestroy(NdxTextFind find) override { finders_.Erase(find); }
    int NDXTextFindStart(NdxTextFind find, const wchar_t* text, uint32_t flags, int) override;
    int NDXTextFindNext(NdxTextFind find) override { return Next(find); }
    void NDXTextFindGetRects(NdxTextFind find, NdxRectArray rects) override { Rects(find, rects); }
    int NDXTextFindGetCharIndex(NdxTextFind find) override { return Current(find).start; }
    int NDXTextFindGetCharCount(NdxTextFind find) override { return Current(find).count; }
    // The field finder shares the page finder's records; its matches are text field values.
    NdxFieldFind NDXFieldTextFindNew(NdxDoc, NdxPage page) override {
        return finders_.Add<NdxFieldFind>(Finder{PageOf(page), {}, -1});
    }
    void NDXFieldTextFindDestroy(NdxFieldFind find) override { finders_.Erase(find); }
    int NDXFieldTextFindStart(NdxFieldFind find, const wchar_t* text, uint32_t flags) override;
    int NDXFieldTextFindNext(NdxFieldFind find) override { return Next(find); }
    void NDXFieldTextFindGetRects(NdxFieldFind find, NdxRectArray rects) override {
        Rects(find, rects);
    }

    // Redaction
    int NDXRedactApplyAll(HostDoc doc, int flags) override {
        return ApplyRedacts(doc, "ApplyAll:" + std::to_string(flags), nullptr);
    }
    int NDXRedactApplyList(HostDoc doc, HostPtrArray annots, int flags) override;
    int NDXRedactApplyBatch(HostDoc doc, int flags, uint32_t options) override {
        return ApplyRedacts(
            doc, "ApplyBatch:" + std::to_string(flags) + ":" + std::to_string(options), nullptr);
    }

  private:
    struct Match {
        int start = 0;
        int count = 0;
        std::vector<NdxRect> rects;
    };
    struct Finder {
        FakePage* page = nullptr;
        std::vector<Match> matches;
        int position = -1;
    };
    struct TextPage {
        FakePage* page = nullptr;
        bool parsed = false;
    };
    struct TempPage {
        FakePage* loaded = nullptr;
        bool parsed = false;
    };
    // Objects the plug-in made through a ...New operation, by handle, until it destroys them.
    template <typename T>
    struct Pool {
        std::map<const void*, std::unique_ptr<T>> items;
        template <typename Handle>
        Handle Add(T value = T{}) {
            auto owned = std::make_unique<T>(std::move(value));
            const void* key = owned.get();
            items.emplace(key, std::move(owned));
            return static_cast<Handle>(const_cast<void*>(key));
        }
        T* Find(const void* handle) const {
            const auto found = items.find(handle);
            return found != items.end() ? found->second.get() : nullptr;
        }
        void Erase(const void* handle) { items.erase(handle); }
    };

    template <typename Hook, typename... Args>
    void FireDocHook(std::size_t word, Args... args);
    FakeObject* NewObject(FakeObject::Kind kind);
    FakeObject* Object(NdxObject handle) const;
    void SetEntry(NdxObject dict, const char* key, FakeObject* value);
    // A new object of `kind` set under `key`, for the caller to fill.
    FakeObject* SetNew(NdxObject dict, const char* key, FakeObject::Kind kind);
    FakeObject* NewRect(const NdxRect& rect);  // [left bottom right top]
    int ApplyRedacts(HostDoc doc, std::string call, const std::set<const void*>* only);
    FakePage* PageOf(const void* page);
    FakeAnnot* NewAnnot(FakeObject* dict);
    void RemoveRedacts(FakeDoc& doc, const std::set<const void*>* only);
    std::vector<Match> FindIn(const FakePage& page, const std::wstring& text, uint32_t flags) const;
    int Next(const void* find) {
        Finder* finder = finders_.Find(find);
        return ++finder->position < static_cast<int>(finder->matches.size()) ? 1 : 0;
    }
    const Match& Current(const void* find) const {
        const Finder* finder = finders_.Find(find);
        return finder->matches.at(static_cast<std::size_t>(finder->position));
    }
    void Rects(const void* find, NdxRectArray rects) {
        *rectArrays_.Find(rects) = Current(find).rects;
    }

    std::vector<std::unique_ptr<FakeDoc>> docs_;
    std::vector<HostDoc> open_;
    std::deque<std::unique_ptr<FakeObject>> objects_;
    std::set<const FakeObject*> objectSet_;
    std::deque<std::unique_ptr<FakeAnnot>> annots_;
    std::set<const void*> ownedDicts_;
    Pool<std::vector<NdxRect>> rectArrays_;
    Pool<std::vector<void*>> ptrArrays_;
    Pool<std::vector<std::wstring>> stringArrays_;
    Pool<std::map<const void*, void*>> maps_;
    Pool<int> parseOptions_;
    Pool<TextPage> textPages_;
    Pool<Finder> finders_;
    Pool<TempPage> tempPages_;
    int undoManager_ = 0;
    int handTool_ = 0;
    int encoderPadding_ = 0;
    int ocrTable_ = 0;
};
