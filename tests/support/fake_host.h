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
    std::wstring tooltip;
    std::wstring keyTip;
    std::wstring largeImage;
    std::wstring smallImage;
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
    HostDoc OpenPdf(FakeDoc doc, std::wstring path = L"/docs/test.pdf");
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
    std::vector<HostWindow> paneWindows;  // what the records' window callbacks gave
    std::vector<std::pair<HostBubbleSource, HostBubbleRecord*>> bubbleRecords;
    struct Bubble {
        std::wstring text;
        uint32_t pluginId;
        int milliseconds;
        int style;
    };
    std::vector<Bubble> bubbles;
    int liveBubbleSources = 0;

    // Documents: knobs and records
    bool refuseAdd = false;
    bool refuseDelete = false;
    bool listInsertIgnored = false;
    bool hasUndo = true;
    bool hasHandTool = true;
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
    HostWideString HostWideStringNew() override;
    void HostWideStringDelete(HostWideString str) override {
        --liveStrings;
        delete &W(str);
    }
    int HostWideStringGetLength(HostWideString str) override;
    int HostWideStringCompareText(HostWideString str, const wchar_t* text) override;
    void HostWideStringSet(HostWideString str, const wchar_t* text) override { W(str) = text; }
    const wchar_t* HostWideStringData(HostWideString str) override { return W(str).c_str(); }
    HostByteString HostByteStringNew() override;
    void HostByteStringDelete(HostByteString str) override {
        --liveStrings;
        delete &B(str);
    }
    int HostByteStringGetLength(HostByteString str) override;
    const char* HostByteStringData(HostByteString str) override { return B(str).c_str(); }
    void HostByteStringSet(HostByteString str, const char* text) override { B(str) = text; }
    void HostByteStringAppendText(HostByteString str, const char* text) override { B(str) += text; }
    int HostByteStringEquals(HostByteString a, HostByteString b) override;
    void HostTextToPdfString(const wchar_t* text, int length, int, HostByteString out) override;

    // Containers
    HostMap HostMapNew(int) override { return maps_.Add<HostMap>(); }
    void HostMapDestroy(HostMap map) override { maps_.Erase(map); }
    void HostMapSet(HostMap map, const void* key, void* value) override;
    HostPtrArray HostPtrArrayNew() override { return ptrArrays_.Add<HostPtrArray>(); }
    void HostPtrArrayDestroy(HostPtrArray array) override { ptrArrays_.Erase(array); }
    int HostPtrArrayGetCount(HostPtrArray array) override;
    void* HostPtrArrayGetAt(HostPtrArray array, int index) override;
    void HostPtrArrayAdd(HostPtrArray array, void* element) override;
    NdxRectArray NDXRectArrayNew() override { return rectArrays_.Add<NdxRectArray>(); }
    void NDXRectArrayDestroy(NdxRectArray array) override { rectArrays_.Erase(array); }
    int NDXRectArrayGetCount(NdxRectArray array) override;
    NdxRect NDXRectArrayGetAt(NdxRectArray array, int index) override;
    void NDXRectArrayAdd(NdxRectArray array, float l, float b, float r, float t) override;
    void NDXRectInflate(NdxRect* rect, float l, float b, float r, float t) override;
    HostStringArray HostStringArrayNew() override;
    void HostStringArrayDestroy(HostStringArray array) override;
    void HostStringArrayGet(HostStringArray array, int index, HostWideString out) override;
    int HostStringArrayCount(HostStringArray array) override;
    HostBase64Encoder HostBase64EncoderNew(int paddingChar) override;
    void HostBase64EncoderDestroy(HostBase64Encoder) override { --liveEncoders; }
    void HostBase64Encode(HostBase64Encoder encoder, const void* data, int64_t size,
                          HostByteString out) override;

    // Application
    void HostAppGetUserDataFolder(HostWideString out) override;
    void HostAppGetLanguage(HostWideString out) override { W(out) = language; }
    void HostAppGetVersion(HostWideString out) override { W(out) = L"1.2.3"; }
    HostResources HostResourcesNew(const wchar_t* modulePath) override;
    void HostResourcesDestroy(HostResources resources) override;
    HostDoc HostAppGetActiveDoc() override { return active; }
    int HostAppGetDocCount() override { return static_cast<int>(open_.size()); }
    HostDoc HostAppGetDocByIndex(int index) override {
        return index >= 0 && index < static_cast<int>(open_.size())
                   ? open_[static_cast<std::size_t>(index)]
                   : nullptr;
    }
    void HostAppRegisterDocEvents(HostDocEventRecord* record) override;
    void HostAppUnregisterDocEvents(HostDocEventRecord* record) override;
    void HostAppRegisterAppEvents(HostAppEventRecord* record) override;
    HostWindow HostAppGetMainWindow() override { return mainWindow; }
    void HostAppRegisterPane(HostPaneRecord* record) override {
        paneRecords.emplace_back(mainWindow, record);
    }
    void HostAppShowPane(const char* paneName, int show) override;
    int HostAppIsChannelPackage() override { return channelPackage ? 1 : 0; }
    void HostMessageShow(const wchar_t* text, int, int, const wchar_t*, int, int) override;
    int HostMessageBox(const wchar_t* text, int buttons, const wchar_t* title, int* check,
                       HostWindow parent) override;
    HostTool HostAppGetToolByName(const char* name) override;
    void HostAppSetCurrentTool(HostTool tool, int persistent) override;
    void HostAppGetName(HostByteString out) override { B(out) = "FakeEditor"; }
    void HostAppGetType(HostByteString out) override { B(out) = "editor"; }
    void HostPrefSetInt(const wchar_t* section, const wchar_t* key, int value) override;
    int HostPrefGetInt(const wchar_t* section, const wchar_t* key) override;
    void HostPrefSetString(const wchar_t* section, const wchar_t* key,
                           const wchar_t* value) override;
    void HostPrefGetString(const wchar_t* section, const wchar_t* key, HostWideString out) override;
    void HostPluginSettingSet(const wchar_t* section, const wchar_t* key,
                              const wchar_t* value) override;
    void HostPluginSettingGet(const wchar_t* section, const wchar_t* key, HostWideString out,
                              const wchar_t* defaultValue) override;
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
    int LoginGetState(HostExtTable table, const wchar_t* baseAddress) override;
    int LoginShowSignIn(HostExtTable table, const wchar_t* text, int flags) override;
    int LoginHasWindow(HostExtTable table, HostWindow window) override;
    void LoginRegisterDomainCallback(HostExtTable table, HostLoginDomainCallback callback) override;
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
    void HostRibbonSetKeyTip(HostRibbonItem item, const wchar_t* text) override;
    void HostRibbonSetTooltip(HostRibbonItem item, const wchar_t* text) override;
    void HostRibbonSetImages(HostRibbonItem item, const wchar_t* largeName,
                             const wchar_t* smallName) override;
    HostRibbonButton HostRibbonItemGetButton(HostRibbonItem item) override;
    HostBubbleSource HostBubbleCreate() override;
    void HostBubbleShow(HostBubbleSource source, uint32_t pluginId, int a, const wchar_t* text,
                        int milliseconds, int kind, int b) override;
    void HostBubbleRegister(HostBubbleSource source, HostBubbleRecord* record) override;
    void HostBubbleUnregister(HostBubbleSource source, HostBubbleRecord* record) override;

    // Progress window
    HostProgress HostProgressNew(HostWindow parent, int flag) override;
    void HostProgressSetText(HostProgress progress, const wchar_t* text) override;
    void HostProgressSetRange(HostProgress progress, int low, int high) override;
    void HostProgressSetPos(HostProgress progress, int pos) override;
    void HostProgressPump(HostProgress progress) override { ++P(progress).pumps; }
    int HostProgressIsCancelled(HostProgress progress) override;
    void HostProgressSetCancelled(HostProgress progress, int cancelled) override;
    void HostProgressDestroy(HostProgress progress) override { P(progress).destroyed = true; }

    // Documents, views and selection
    NdxDoc HostDocGetPdfDoc(HostDoc doc) override;
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
    void HostDocClose(HostDoc doc, int keepOpenCheck, int a, int b) override;
    HostDoc HostDocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions* options) override;
    void HostDocSetChanged(HostDoc doc) override;
    HostDocView HostDocGetView(HostDoc doc) override;
    HostTextSelectTool HostDocGetTextSelectTool(HostDoc doc) override;
    void HostDocTouchPage(HostDoc doc, int pageIndex) override;
    int HostDocIsAnnotAlive(HostDoc, HostAnnot annot) override { return A(annot)->alive ? 1 : 0; }
    HostFormEnv HostDocGetInterForm(HostDoc doc) override;
    int HostDocReplaceText(HostDoc doc, int page, int ordinal, const wchar_t* text) override;
    HostPageView HostDocGetPageView(HostDoc doc, int pageIndex) override;
    void HostDocRefreshPageAnnots(HostDoc doc, int pageIndex, int flags) override;
    HostPageView HostDocViewGetPageView(HostDocView view, int pageIndex) override;
    void HostDocViewGotoPage(HostDocView view, int pageIndex) override;
    HostPageView HostDocViewGetCurrentPageView(HostDocView view) override;
    void HostDocViewScrollTo(HostDocView, int x, int y) override { scrolls.emplace_back(x, y); }
    void HostDocViewInvalidateRect(HostDocView view, int l, int t, int r, int b) override;
    int HostPageViewCountAnnots(HostPageView page) override;
    void HostPageViewPointToDevice(HostPageView page, const NdxPoint* point, int* x,
                                   int* y) override;
    NdxRect HostPageViewGetVisibleRect(HostPageView page) override { return PageOf(page)->visible; }
    HostAnnot HostPageViewGetAnnot(HostPageView page, int index) override;
    int HostPageViewDeleteAnnot(HostPageView page, HostAnnot annot) override;
    void HostPageViewUpdateAnnot(HostPageView page, HostAnnot annot) override;
    HostAnnot HostPageViewAddAnnot(HostPageView page, NdxObject dict, int index) override;
    int HostPageViewOwnsAnnot(HostPageView page, HostAnnot annot) override;
    NdxPage HostPageViewGetPage(HostPageView page) override;
    void HostPageReloadAnnots(HostPageView page) override;
    void HostTextSelectToolClear(HostTextSelectTool tool) override;
    void HostTextSelectToolSelectRects(HostTextSelectTool tool, HostPageView page,
                                       NdxRectArray rects) override;
    void HostTextSelectToolSelectRanges(HostTextSelectTool tool, HostMap ranges) override;

    // PDF documents, pages and objects
    int NDXDocGetPageCount(NdxDoc doc) override;
    NdxObject NDXDocGetInfo(NdxDoc doc) override;
    NdxObject NDXDocGetPage(NdxDoc doc, int pageIndex) override;
    void NDXDocSaveToFile(NdxDoc doc, const char* utf8Path, int a, int b) override;
    NdxPage NDXPageNew() override { return tempPages_.Add<NdxPage>(); }
    void NDXPageDestroy(NdxPage page) override { tempPages_.Erase(page); }
    int NDXPageIsParsed(NdxPage page) override;
    void NDXPageLoad(NdxPage page, NdxDoc doc, NdxObject pageDict, int flags) override;
    void NDXPageParse(NdxPage page, NdxParseOptions options) override;
    int NDXPageCountObjects(NdxPage page) override;
    NdxPosition NDXPageGetFirstObjectPos(NdxPage page) override;
    NdxPageObject NDXPageGetNextObject(NdxPage page, NdxPosition* position) override;
    int NDXPageObjectGetType(NdxPageObject object) override;
    void NDXPageGetTextLines(HostStringArray out, NdxDoc doc, NdxObject pageDict, int a,
                             int b) override;
    NdxParseOptions NDXParseOptionsNew(int a, int b, int c, int d) override;
    void NDXParseOptionsDestroy(NdxParseOptions options) override { parseOptions_.Erase(options); }
    int NDXObjectGetType(NdxObject object) override;
    void NDXObjectDestroy(NdxObject object) override;
    NdxObject NDXObjectGetDirect(NdxObject object) override;
    void NDXStringGetBytes(NdxObject string, HostByteString out) override;
    NdxObject NDXArrayNew() override { return H<NdxObject>(NewObject(FakeObject::Kind::kArray)); }
    int NDXArrayCount(NdxObject array) override;
    float NDXArrayGetNumber(NdxObject array, int index) override;
    void NDXArrayAddNumber(NdxObject array, float value) override;
    NdxObject NDXDictNew() override;
    NdxObject NDXDictGet(NdxObject dict, const char* key) override;
    void NDXDictGetString(NdxObject dict, const char* key, HostByteString out) override;
    void NDXDictSetObject(NdxObject dict, const char* key, NdxObject value, NdxDoc doc) override;
    void NDXDictSetName(NdxObject dict, const char* key, const char* name) override;
    void NDXDictSetString(NdxObject dict, const char* key, HostByteString value) override;
    void NDXDictSetInteger(NdxObject dict, const char* key, int value) override;
    void NDXDictSetReference(NdxObject dict, const char* key, NdxDoc doc,
                             NdxObject target) override;
    void NDXDictSetRect(NdxObject dict, const char* key, NdxRect rect) override;
    NdxFlattener NDXFlattenerNew(NdxDoc doc) override;
    void NDXFlattenerAddPage(NdxFlattener flattener, NdxPage page, int a, int b) override;
    void NDXFlattenerDone(NdxFlattener) override { flattenerCalls.push_back("done"); }

    // Annotations and undo
    NdxAnnot NDXAnnotNew(NdxObject dict) override;
    NdxObject NDXAnnotGetDict(NdxAnnot annot) override { return H<NdxObject>(A(annot)->dict); }
    void NDXAnnotGetSubtype(NdxAnnot annot, HostByteString out) override;
    NdxRect NDXAnnotGetRect(NdxAnnot annot) override;
    NdxAnnotList NDXAnnotListGet(NdxPage page) override { return H<NdxAnnotList>(PageOf(page)); }
    NdxAnnot NDXAnnotListGetAt(NdxAnnotList list, int index) override;
    int NDXAnnotListCount(NdxAnnotList list) override;
    void NDXAnnotListInsert(NdxAnnotList list, int index, NdxAnnot annot) override;
    NdxAnnot NDXHostAnnotGetPdfAnnot(HostAnnot annot) override { return H<NdxAnnot>(annot); }
    HostUndoManager HostUndoGetManager() override;
    void HostUndoRecordAddAnnot(HostUndoManager undo, HostAnnot annot, int a, int b) override;
    void HostUndoRecordDeleteAnnot(HostUndoManager undo, HostAnnot annot, int a) override;

    // Forms
    NdxFormField NDXInterFormGetField(NdxInterForm form, int index, const wchar_t* name) override;
    int NDXInterFormCountPageControls(NdxInterForm form, NdxPage page) override;
    NdxFormControl NDXInterFormGetPageControl(NdxInterForm form, NdxPage page, int index) override;
    void NDXInterFormSetUpdateAP(NdxInterForm form, int update) override;
    void NDXFormFieldGetFullName(NdxFormField field, HostWideString out) override;
    void NDXFormFieldGetValue(NdxFormField field, HostWideString out) override;
    int NDXFormFieldSetValue(NdxFormField field, const wchar_t* value, int notify) override;
    int NDXFormControlGetType(NdxFormControl control) override { return C(control)->type; }
    NdxFormField NDXFormControlGetField(NdxFormControl control) override;
    void NDXFormControlGetRect(NdxFormControl control, NdxRect* out) override;
    NdxInterForm NDXInterFormFromEnvironment(HostFormEnv env) override;

    // Text search
    NdxTextPage NDXTextPageNew(NdxPage page, int flags) override;
    void NDXTextPageDestroy(NdxTextPage textPage) override { textPages_.Erase(textPage); }
    void NDXTextPageParse(NdxTextPage textPage) override;
    int NDXTextPageIsParsed(NdxTextPage textPage) override;
    NdxTextFind NDXTextFindNew(NdxTextPage textPage) override;
    void NDXTextFindDestroy(NdxTextFind find) override { finders_.Erase(find); }
    int NDXTextFindStart(NdxTextFind find, const wchar_t* text, uint32_t flags, int) override;
    int NDXTextFindNext(NdxTextFind find) override;
    void NDXTextFindGetRects(NdxTextFind find, NdxRectArray rects) override;
    int NDXTextFindGetCharIndex(NdxTextFind find) override;
    int NDXTextFindGetCharCount(NdxTextFind find) override;
    NdxFieldFind NDXFieldTextFindNew(NdxDoc doc, NdxPage page) override;
    void NDXFieldTextFindDestroy(NdxFieldFind find) override { fieldFinders_.Erase(find); }
    int NDXFieldTextFindStart(NdxFieldFind find, const wchar_t* text, uint32_t flags) override;
    int NDXFieldTextFindNext(NdxFieldFind find) override;
    void NDXFieldTextFindGetRects(NdxFieldFind find, NdxRectArray rects) override;

    // Redaction
    int NDXRedactApplyAll(HostDoc doc, int flags) override;
    int NDXRedactApplyList(HostDoc doc, HostPtrArray annots, int flags) override;
    int NDXRedactApplyBatch(HostDoc doc, int flags, uint32_t options) override;

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
    FakePage* PageOf(const void* page);
    FakeAnnot* NewAnnot(FakeObject* dict);
    void RemoveRedacts(FakeDoc& doc, const std::set<const void*>* only);
    std::vector<Match> FindIn(const FakePage& page, const std::wstring& text, uint32_t flags) const;

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
    Pool<Finder> fieldFinders_;
    Pool<TempPage> tempPages_;
    int undoManager_ = 0;
    int handTool_ = 0;
    int encoderPadding_ = 0;
    int ocrTable_ = 0;
};
