// FakeHost: an in-memory editor for tests of the plug-in logic. A document is a record whose pages
// hold the types of their content objects, lines of text and form controls. Characters of a page
// are numbered line after line with no separator; character c of line l stands in the box
// (10c, 700 - 20l, 10c + 10, 710 - 20l). Every object the plug-in makes through a ...New
// operation is counted until it is destroyed, and every dictionary keeps its entries in the order
// they were set, so tests can read back exactly what the plug-in wrote. Strings, preferences,
// event registrations, the ribbon, task panes, the "login" table, progress windows and the OCR
// extension behave as a host's would; knobs make single operations fail.
#pragma once

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
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
#include "util/utf.h"

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
        // For a pool of sequences: the length of one, and one of its elements.
        int Size(const void* handle) const { return static_cast<int>(Find(handle)->size()); }
        auto& At(const void* handle, int i) const { return Find(handle)->at(std::size_t(i)); }
    };
    // Handles are pointers to the fake's own records.
    static std::wstring& W(HostWideString s) { return *reinterpret_cast<std::wstring*>(s); }
    static std::string& B(HostByteString s) { return *reinterpret_cast<std::string*>(s); }
    static FakeAnnot* A(const void* annot) { return H<FakeAnnot*>(annot); }
    static FakeControl* C(const void* control) { return H<FakeControl*>(control); }
    static FakeProgress& P(const void* progress) { return *H<FakeProgress*>(progress); }
    static FakePage& PdfPage(const void* page) { return *H<FakePage*>(page); }
    template <typename Handle>
    static Handle H(const void* pointer) {
        return static_cast<Handle>(const_cast<void*>(pointer));
    }
    static FakeRibbonNode* Node(const void* handle) { return H<FakeRibbonNode*>(handle); }
    static std::wstring Text(const wchar_t* text) { return text != nullptr ? text : L""; }
    // Element `index` of `items`, or null when there is none.
    template <typename T>
    static T* Item(std::vector<T>& items, int index) {
        return static_cast<std::size_t>(index) < items.size() ? &items[std::size_t(index)]
                                                              : nullptr;
    }
    // A new string counted in `liveStrings` until Uncounted deletes it.
    template <typename Handle, typename String>
    Handle Counted() {
        ++liveStrings;
        return reinterpret_cast<Handle>(new String());
    }
    template <typename String>
    void Uncounted(String* string) {
        --liveStrings;
        delete string;
    }
    // A new last child of the ribbon node `parent`, counted in `added` when given.
    static FakeRibbonNode* AddChild(const void* parent, const wchar_t* name, const wchar_t* title,
                                    int* added = nullptr, int type = 0, int position = -1);

  public:
    FakeHost();
    ~FakeHost() override;

    // Opens a document and makes it the active one; the handle stays valid until the test ends.
    HostDoc Open(FakeDoc doc) {
        for (std::size_t i = 0; i < doc.pages.size(); ++i) {
            FakePage& page = doc.pages[i];
            page.index = static_cast<int>(i);
            page.dict = NewObject(FakeObject::Kind::kDict);
            page.dict->label = "page" + std::to_string(i);
            if (page.mediaBox)
                page.dict->entries.emplace_back("MediaBox", NewRect(*page.mediaBox));
        }
        docs_.push_back(std::make_unique<FakeDoc>(std::move(doc)));
        auto handle = reinterpret_cast<HostDoc>(docs_.back().get());
        open_.push_back(handle);
        active = handle;
        FireDocHook<HostDocHook>(kDocEventDidOpen, handle);
        FireDocHook<HostDocHook>(kDocEventActivate, handle);
        return handle;
    }
    HostDoc OpenPdf(FakeDoc doc, std::wstring path = L"/docs/test.pdf") {
        doc.path = std::move(path);
        return Open(std::move(doc));
    }
    // Closes a document as the editor does: the closing hooks run, then another becomes active.
    void Close(HostDoc doc) {
        std::erase(open_, doc);
        if (active == doc)
            active = open_.empty() ? nullptr : open_.back();
        FireDocHook<HostDocHook>(kDocEventClosing, doc);
    }
    // The document behind a document, view, PDF document or form handle.
    FakeDoc& Doc(const void* doc) { return *H<FakeDoc*>(doc); }
    FakePage& Page(HostDoc doc, int index) { return Doc(doc).pages.at(index); }
    // The user deletes an annotation in the editor.
    void UserDeletes(HostDoc doc, int page, std::size_t position) {
        auto& annots = Page(doc, page).annots;
        annots.at(position)->alive = false;
        annots.erase(annots.begin() + static_cast<std::ptrdiff_t>(position));
    }
    // The user draws a Redact annotation of their own.
    void UserRedacts(HostDoc doc, int page, const std::string& uniqueName) {
        FakeObject* dict = NewObject(FakeObject::Kind::kDict);
        SetNew(H<NdxObject>(dict), "Subtype", FakeObject::Kind::kName)->text = "Redact";
        if (!uniqueName.empty())
            SetNew(H<NdxObject>(dict), "NM", FakeObject::Kind::kString)->text = uniqueName;
        Page(doc, page).annots.push_back(NewAnnot(dict));
    }
    // Objects made through ...New and not destroyed or handed over.
    int LiveHandles() const {
        return static_cast<int>(ownedDicts_.size() + rectArrays_.items.size() +
                                ptrArrays_.items.size() + maps_.items.size() +
                                parseOptions_.items.size() + textPages_.items.size() +
                                finders_.items.size() + tempPages_.items.size());
    }
    // Runs the document saved hooks as the editor does after a save.
    void FireDidSave(HostDoc doc, int result) {
        FireDocHook<HostDocSaveHook>(kDocEventDidSave, doc, result);
    }
    // The progress window that is up, or null.
    FakeProgress* Bar() {
        const auto up = std::ranges::find(progressWindows, false, &FakeProgress::destroyed);
        return up != progressWindows.end() ? up->get() : nullptr;
    }
    // The ribbon bar of a frame (made on first use unless `noRibbon`).
    FakeRibbonNode& Ribbon(HostFrame frame) {
        auto& bar = ribbons[frame];
        if (!bar)
            bar = std::make_unique<FakeRibbonNode>();
        return *bar;
    }
    // The node at bar / category / panel / element [/ entry] by names; null when missing.
    FakeRibbonNode* Find(HostFrame frame, std::initializer_list<std::wstring> path) {
        const auto bar = ribbons.find(frame);
        FakeRibbonNode* node = bar != ribbons.end() ? bar->second.get() : nullptr;
        for (const std::wstring& name : path) {
            if (node == nullptr)
                return nullptr;
            node = node->Child(name);
        }
        return node;
    }
    // Adds nodes along a path, as a host whose ribbon already holds them.
    FakeRibbonNode& Make(HostFrame frame, std::initializer_list<std::wstring> path);
    // Calls the notify word of every registered bubble record.
    void NotifyBubbles(int ready) {
        const auto records = bubbleRecords;
        for (const auto& [source, record] : records) {
            const auto notify = reinterpret_cast<HostBubbleNotifyFn>(record->word(kBubbleNotify));
            notify(record->word(kBubbleClientData), ready);
        }
    }

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
    HostWideString HostWideStringNew() override { return Counted<HostWideString, std::wstring>(); }
    void HostWideStringDelete(HostWideString s) override { Uncounted(&W(s)); }
    int HostWideStringGetLength(HostWideString s) override { return static_cast<int>(W(s).size()); }
    int HostWideStringCompareText(HostWideString s, const wchar_t* text) override {
        return W(s).compare(text);
    }
    void HostWideStringSet(HostWideString s, const wchar_t* text) override { W(s) = text; }
    const wchar_t* HostWideStringData(HostWideString s) override { return W(s).c_str(); }
    HostByteString HostByteStringNew() override { return Counted<HostByteString, std::string>(); }
    void HostByteStringDelete(HostByteString s) override { Uncounted(&B(s)); }
    int HostByteStringGetLength(HostByteString s) override { return static_cast<int>(B(s).size()); }
    const char* HostByteStringData(HostByteString s) override { return B(s).c_str(); }
    void HostByteStringSet(HostByteString s, const char* text) override { B(s) = text; }
    void HostByteStringAppendText(HostByteString s, const char* text) override { B(s) += text; }
    int HostByteStringEquals(HostByteString a, HostByteString b) override { return B(a) == B(b); }
    // ASCII as it is, anything else as UTF-16BE after its byte order mark.
    void HostTextToPdfString(const wchar_t* text, int length, int, HostByteString out) override {
        const std::wstring wide(text, static_cast<std::size_t>(length));
        std::string& bytes = B(out);
        if (std::ranges::all_of(wide, [](wchar_t c) { return c < 0x80; })) {
            bytes.assign(wide.begin(), wide.end());
            return;
        }
        bytes = "\xFE\xFF";
        for (wchar_t c : wide)
            bytes += {static_cast<char>(c >> 8), static_cast<char>(c)};
    }

    // Containers
    HostMap HostMapNew(int) override { return maps_.Add<HostMap>(); }
    void HostMapDestroy(HostMap map) override { maps_.Erase(map); }
    void HostMapSet(HostMap map, const void* key, void* value) override {
        (*maps_.Find(map))[key] = value;
    }
    HostPtrArray HostPtrArrayNew() override { return ptrArrays_.Add<HostPtrArray>(); }
    void HostPtrArrayDestroy(HostPtrArray a) override { ptrArrays_.Erase(a); }
    int HostPtrArrayGetCount(HostPtrArray a) override { return ptrArrays_.Size(a); }
    void* HostPtrArrayGetAt(HostPtrArray a, int index) override { return ptrArrays_.At(a, index); }
    void HostPtrArrayAdd(HostPtrArray a, void* item) override {
        ptrArrays_.Find(a)->push_back(item);
    }
    NdxRectArray NDXRectArrayNew() override { return rectArrays_.Add<NdxRectArray>(); }
    void NDXRectArrayDestroy(NdxRectArray a) override { rectArrays_.Erase(a); }
    int NDXRectArrayGetCount(NdxRectArray a) override { return rectArrays_.Size(a); }
    NdxRect NDXRectArrayGetAt(NdxRectArray a, int index) override {
        return rectArrays_.At(a, index);
    }
    void NDXRectArrayAdd(NdxRectArray a, float l, float b, float r, float t) override {
        rectArrays_.Find(a)->push_back(NdxRect{l, b, r, t});
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
    void HostStringArrayGet(HostStringArray a, int index, HostWideString out) override {
        W(out) = stringArrays_.At(a, index);
    }
    int HostStringArrayCount(HostStringArray a) override { return stringArrays_.Size(a); }
    HostBase64Encoder HostBase64EncoderNew(int paddingChar) override {
        ++liveEncoders;
        encoderPadding_ = paddingChar;
        return reinterpret_cast<HostBase64Encoder>(&encoderPadding_);
    }
    void HostBase64EncoderDestroy(HostBase64Encoder) override { --liveEncoders; }
    void HostBase64Encode(HostBase64Encoder encoder, const void* data, int64_t size,
                          HostByteString out) override;

    // Application
    void HostAppGetUserDataFolder(HostWideString out) override {
        W(out) = FromUtf8(userData.string());
    }
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
        HostDoc* doc = Item(open_, index);
        return doc != nullptr ? *doc : nullptr;
    }
    void HostAppRegisterDocEvents(HostDocEventRecord* record) override {
        docEventRecords.push_back(record);
    }
    void HostAppUnregisterDocEvents(HostDocEventRecord* record) override {
        std::erase(docEventRecords, record);
    }
    void HostAppRegisterAppEvents(HostAppEventRecord* record) override {
        appEventRecords.push_back(record);
    }
    HostWindow HostAppGetMainWindow() override { return mainWindow; }
    void HostAppRegisterPane(HostPaneRecord* record) override {
        paneRecords.emplace_back(mainWindow, record);
    }
    void HostAppShowPane(const char* paneName, int show) override {
        paneCalls.emplace_back(paneName, show);
        for (const auto& [window, record] : paneRecords) {
            HostPaneRecord* const pane = record;
            const auto word = [pane](std::size_t at) { return pane->word(at); };
            void* client = word(kPaneClientData);
            const auto name = reinterpret_cast<HostPaneNameFn>(word(kPaneGetName));
            if (window != mainWindow || name(client) != std::string(paneName))
                continue;
            bool& shown = paneShown[record];
            if (show != 0)
                reinterpret_cast<HostPaneCreateFn>(word(kPaneCreateWindow))(client, paneParent);
            else if (shown)
                reinterpret_cast<HostPaneClosedFn>(word(kPaneClosed))(client);
            shown = show != 0;
            return;
        }
    }
    int HostAppIsChannelPackage() override { return channelPackage ? 1 : 0; }
    void HostMessageShow(const wchar_t* text, int, int, const wchar_t*, int, int) override {
        messages.emplace_back(text);
    }
    int HostMessageBox(const wchar_t* text, int buttons, const wchar_t* title, int*,
                       HostWindow parent) override {
        messageBoxes.emplace_back(title);
        messageBoxes.emplace_back(text);
        calls.push_back("MessageBox:" + std::to_string(buttons) +
                        (parent != nullptr ? ":parent" : ""));
        return FakePlatform::NextAnswer(messageBoxAnswers, 2);
    }
    HostTool HostAppGetToolByName(const char* name) override {
        return std::string(name) == "Hand" ? H<HostTool>(&handTool_) : nullptr;
    }
    void HostAppSetCurrentTool(HostTool, int persistent) override {
        Log("SetCurrentTool", persistent);
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
                            HostWideString extra1, HostWideString extra2, int last) override {
        const bool gapsNull =
            unused1 == nullptr && unused2 == nullptr && unused3 == nullptr && unused4 == nullptr;
        usageReports.push_back(FakeUsageReport{W(name), W(type), W(details), W(module), W(version),
                                               W(extra1), W(extra2), gapsNull, last});
    }

    // Extensions: the "login" table and OCR
    HostExtTable HostExtensionFind(const char* name, int version) override {
        if (ocrTable && std::string(name) == "OCRRecognition extension HFT" && version == 1)
            return reinterpret_cast<HostExtTable>(&ocrTable_);
        if (loginTable && std::string(name) == "login" && version == 103)
            return reinterpret_cast<HostExtTable>(this);
        return nullptr;
    }
    HostFunction HostExtensionGetFunction(HostExtTable table, int index) override;
    void LoginGetServerAddress(HostExtTable, HostWideString out) override { W(out) = loginServer; }
    int LoginGetToken(HostExtTable, const wchar_t* baseAddress, const wchar_t*,
                      HostWideString token) override {
        account.tokenRequests.emplace_back(baseAddress);
        const auto found = account.tokens.find(baseAddress);
        W(token) = found != account.tokens.end() ? found->second : std::wstring();
        return found != account.tokens.end() ? 1 : 0;
    }
    int LoginGetUserInfo(HostExtTable, const wchar_t*, HostWideString email, HostWideString userId,
                         HostWideString firstName, HostWideString lastName) override {
        if (!account.hasUser)
            return 0;
        W(email) = account.email;
        W(userId) = account.userId;
        W(firstName) = account.firstName;
        W(lastName) = account.lastName;
        return 1;
    }
    int LoginGetState(HostExtTable, const wchar_t* baseAddress) override {
        account.stateRequests.emplace_back(baseAddress);
        return account.signedIn ? 2 : 0;
    }
    int LoginShowSignIn(HostExtTable, const wchar_t* text, int) override {
        account.signInTexts.push_back(Text(text));
        if (account.signInAnswer != 0 && account.signInSignsIn)
            account.signedIn = true;
        return account.signInAnswer;
    }
    int LoginHasWindow(HostExtTable, HostWindow window) override {
        account.hasWindowCalls.push_back(window);
        return account.hasWindow;
    }
    void LoginRegisterDomainCallback(HostExtTable, HostLoginDomainCallback callback) override {
        account.domainCallback = callback;
    }
    int OcrRecognizePage(HostExtTable, NdxPage page, HostOcrOptions* options, int) override {
        recognisedPages.push_back(PdfPage(page).index);
        ocrLanguage = options->language;
        return 1;
    }
    int OcrShowDialog(HostExtTable, HostWindow, HostOcrOptions*,
                      HostOcrDialogCallback* callback) override {
        ++ocrDialogs;
        if (ocrDialogConfirms)
            callback->confirmed(callback->client, L"German", 0);
        return 1;
    }

    // Ribbon and notifications
    HostRibbonBar HostRibbonGetBar(HostFrame frame) override {
        return noRibbon ? nullptr : H<HostRibbonBar>(&Ribbon(frame));
    }
    HostRibbonCategory HostRibbonAddCategory(HostRibbonBar bar, const wchar_t* name,
                                             const wchar_t* title) override {
        return H<HostRibbonCategory>(AddChild(bar, name, title, &categoriesAdded));
    }
    HostRibbonCategory HostRibbonFindCategory(HostRibbonBar bar, const wchar_t* name) override {
        return H<HostRibbonCategory>(Node(bar)->Child(Text(name)));
    }
    HostRibbonPanel HostRibbonAddPanel(HostRibbonCategory category, const wchar_t* name,
                                       const wchar_t* title, int) override {
        return H<HostRibbonPanel>(AddChild(category, name, title, &panelsAdded));
    }
    HostRibbonPanel HostRibbonFindPanel(HostRibbonCategory category, const wchar_t* name) override {
        return H<HostRibbonPanel>(Node(category)->Child(Text(name)));
    }
    HostRibbonElement HostRibbonAddElement(HostRibbonPanel panel, int type, const wchar_t* name,
                                           const wchar_t* title, int) override {
        return H<HostRibbonElement>(AddChild(panel, name, title, &elementsAdded, type));
    }
    HostRibbonElement HostRibbonFindElement(HostRibbonPanel panel, const wchar_t* name) override {
        return H<HostRibbonElement>(Node(panel)->Child(Text(name)));
    }
    HostRibbonItem HostRibbonAddSubItem(HostRibbonElement element, int, const wchar_t* name,
                                        const wchar_t* title, int position, int, int,
                                        int) override {
        return H<HostRibbonItem>(AddChild(element, name, title, nullptr, 0, position));
    }
    void HostRibbonSetExecuteProc(HostRibbonItem item, HostRibbonExecuteProc proc) override {
        Node(item)->execute = proc;
    }
    void HostRibbonSetEnableProc(HostRibbonItem item, HostRibbonEnableProc proc) override {
        Node(item)->enable = proc;
    }
    HostRibbonButton HostRibbonItemGetButton(HostRibbonItem item) override {
        return reinterpret_cast<HostRibbonButton>(item);
    }
    HostBubbleSource HostBubbleCreate() override {
        static uintptr_t sources = 0x3000;
        return reinterpret_cast<HostBubbleSource>(++sources);
    }
    void HostBubbleShow(HostBubbleSource, uint32_t pluginId, int, const wchar_t* text,
                        int milliseconds, int kind, int) override {
        bubbles.push_back({Text(text), pluginId, milliseconds, kind});
    }
    void HostBubbleRegister(HostBubbleSource source, HostBubbleRecord* record) override {
        bubbleRecords.emplace_back(source, record);
    }
    void HostBubbleUnregister(HostBubbleSource source, HostBubbleRecord* record) override {
        std::erase(bubbleRecords, std::make_pair(source, record));
    }

    // Progress window
    HostProgress HostProgressNew(HostWindow, int flag) override {
        if (refuseProgress)
            return nullptr;
        progressWindows.push_back(std::make_unique<FakeProgress>());
        progressWindows.back()->flag = flag;
        return reinterpret_cast<HostProgress>(progressWindows.back().get());
    }
    void HostProgressSetText(HostProgress p, const wchar_t* text) override { P(p).text = text; }
    void HostProgressSetPos(HostProgress p, int pos) override { P(p).positions.push_back(pos); }
    void HostProgressPump(HostProgress p) override { ++P(p).pumps; }
    int HostProgressIsCancelled(HostProgress p) override { return P(p).pumps == cancelAtPump; }
    void HostProgressSetCancelled(HostProgress p, int) override { P(p).text += L" (cancel seen)"; }
    void HostProgressDestroy(HostProgress p) override { P(p).destroyed = true; }

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
    void HostDocGetFileName(HostDoc doc, HostWideString out) override {
        W(out) = std::filesystem::path(ToUtf8(Doc(doc).path)).filename().wstring();
    }
    int HostDocSave(HostDoc doc, int, int, int, int) override {
        if (refuseSave)
            return 0;
        Doc(doc).modified = false;
        return 1;
    }
    int HostDocSaveAs(HostDoc doc, const wchar_t* path, int, int,
                      const HostSaveAsOptions* options) override {
        savedAs.emplace_back(path);
        saveAsOptions.push_back(*options);
        if (refuseSaveAs)
            return 0;
        Doc(doc).path = path;
        Doc(doc).modified = false;
        return 1;
    }
    void HostDocClose(HostDoc doc, int, int, int) override {
        closedDocs.push_back(doc);
        Close(doc);
    }
    // A hidden document is not activated, and its model is the one `disk` holds for the file's
    // bytes.
    HostDoc HostDocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions*) override {
        std::ifstream file(ToUtf8(path), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        const auto found = disk.find(bytes);
        if (!file || found == disk.end())
            return nullptr;
        HostDoc shown = active;
        HostDoc doc = OpenPdf(found->second, path);
        active = shown;
        Doc(doc).hasPdf = copyHasPdf;
        hiddenDocs.push_back(doc);
        return doc;
    }
    void HostDocSetChanged(HostDoc doc) override {
        Doc(doc).modified = true;
        Log("SetChanged");
    }
    HostDocView HostDocGetView(HostDoc doc) override {
        FakeDoc* pdf = H<FakeDoc*>(doc);
        return pdf != nullptr && pdf->hasView ? H<HostDocView>(pdf) : nullptr;
    }
    HostTextSelectTool HostDocGetTextSelectTool(HostDoc doc) override {
        FakeDoc* pdf = H<FakeDoc*>(doc);
        return pdf != nullptr && pdf->hasTool ? H<HostTextSelectTool>(pdf) : nullptr;
    }
    void HostDocTouchPage(HostDoc, int pageIndex) override { Log("TouchPage", pageIndex); }
    int HostDocIsAnnotAlive(HostDoc, HostAnnot annot) override { return A(annot)->alive ? 1 : 0; }
    HostFormEnv HostDocGetInterForm(HostDoc doc) override {
        FakeDoc* pdf = H<FakeDoc*>(doc);
        return pdf != nullptr && pdf->hasForm ? H<HostFormEnv>(pdf) : nullptr;
    }
    int HostDocReplaceText(HostDoc, int page, int ordinal, const wchar_t* text) override {
        replacements.emplace_back(page, ordinal, text);
        return 1;
    }
    HostPageView HostDocGetPageView(HostDoc doc, int pageIndex) override {
        return H<HostPageView>(Item(Doc(doc).pages, pageIndex));
    }
    void HostDocRefreshPageAnnots(HostDoc, int pageIndex, int flags) override {
        Log("RefreshPageAnnots", pageIndex, flags);
    }
    HostPageView HostDocViewGetPageView(HostDocView view, int pageIndex) override {
        return HostDocGetPageView(H<HostDoc>(view), pageIndex);
    }
    void HostDocViewGotoPage(HostDocView view, int pageIndex) override {
        Doc(view).currentPage = pageIndex;
        Log("GotoPage", pageIndex);
    }
    HostPageView HostDocViewGetCurrentPageView(HostDocView view) override {
        return HostDocViewGetPageView(view, Doc(view).currentPage);
    }
    void HostDocViewScrollTo(HostDocView, int x, int y) override { scrolls.emplace_back(x, y); }
    void HostDocViewInvalidateRect(HostDocView, int l, int t, int r, int b) override {
        repaints.push_back({l, t, r, b});
    }
    int HostPageViewCountAnnots(HostPageView p) override {
        return static_cast<int>(Annots(p).size());
    }
    // Device space: twice the page's numbers.
    void HostPageViewPointToDevice(HostPageView, const NdxPoint* point, int* x, int* y) override {
        *x = static_cast<int>(point->x * 2);
        *y = static_cast<int>(point->y * 2);
    }
    NdxRect HostPageViewGetVisibleRect(HostPageView page) override { return PageOf(page)->visible; }
    HostAnnot HostPageViewGetAnnot(HostPageView page, int index) override {
        FakeAnnot** annot = Item(Annots(page), index);
        return annot != nullptr ? H<HostAnnot>(*annot) : nullptr;
    }
    int HostPageViewDeleteAnnot(HostPageView page, HostAnnot annot) override {
        Log("DeleteAnnot");
        auto& annots = PageOf(page)->annots;
        const auto found = std::find(annots.begin(), annots.end(), A(annot));
        if (found == annots.end())
            return 0;
        annots.erase(found);
        A(annot)->alive = false;
        return 1;
    }
    void HostPageViewUpdateAnnot(HostPageView, HostAnnot) override { Log("UpdateAnnot"); }
    HostAnnot HostPageViewAddAnnot(HostPageView page, NdxObject dict, int index) override {
        ownedDicts_.erase(dict);
        Log("AddAnnot", index);
        if (refuseAdd)
            return nullptr;
        FakeAnnot* annot = NewAnnot(Object(dict));
        PageOf(page)->annots.push_back(annot);
        return H<HostAnnot>(annot);
    }
    int HostPageViewOwnsAnnot(HostPageView page, HostAnnot annot) override {
        return std::ranges::count(Annots(page), A(annot)) != 0;
    }
    NdxPage HostPageViewGetPage(HostPageView page) override {
        FakePage* fake = PageOf(page);
        return fake->available ? H<NdxPage>(fake) : nullptr;
    }
    void HostPageReloadAnnots(HostPageView page) override {
        Log("ReloadAnnots", PageOf(page)->index);
    }
    void HostTextSelectToolClear(HostTextSelectTool) override {
        selection.reset();
        Log("ClearSelection");
    }
    void HostTextSelectToolSelectRects(HostTextSelectTool, HostPageView page,
                                       NdxRectArray rects) override {
        selection = FakeSelection{PageOf(page)->index, *rectArrays_.Find(rects), {}};
    }
    void HostTextSelectToolSelectRanges(HostTextSelectTool, HostMap ranges) override {
        FakeSelection chosen;
        for (const auto& [key, value] : *maps_.Find(ranges)) {
            const auto* pair = static_cast<const int32_t*>(ptrArrays_.Find(value)->at(0));
            chosen.ranges[static_cast<int>(reinterpret_cast<intptr_t>(key))] = {pair[0], pair[1]};
        }
        selection = chosen;
    }

    // PDF documents, pages and objects
    int NDXDocGetPageCount(NdxDoc doc) override { return static_cast<int>(Doc(doc).pages.size()); }
    NdxObject NDXDocGetInfo(NdxDoc doc) override {
        auto& info = Doc(doc).info;
        return info ? reinterpret_cast<NdxObject>(&*info) : nullptr;
    }
    NdxObject NDXDocGetPage(NdxDoc doc, int pageIndex) override {
        const FakePage* page = doc != nullptr ? Item(Doc(doc).pages, pageIndex) : nullptr;
        return page != nullptr ? H<NdxObject>(page->dict) : nullptr;
    }
    void NDXDocSaveToFile(NdxDoc, const char* utf8Path, int a, int b) override {
        savedToFile.push_back(std::string(utf8Path) + ":" + std::to_string(a) + "," +
                              std::to_string(b));
    }
    NdxPage NDXPageNew() override { return tempPages_.Add<NdxPage>(); }
    void NDXPageDestroy(NdxPage page) override { tempPages_.Erase(page); }
    int NDXPageIsParsed(NdxPage page) override {
        const TempPage* temp = tempPages_.Find(page);
        return temp != nullptr ? temp->parsed : PageOf(page)->parsed;
    }
    void NDXPageLoad(NdxPage page, NdxDoc doc, NdxObject pageDict, int) override {
        for (FakePage& candidate : H<FakeDoc*>(doc)->pages) {
            if (H<NdxObject>(candidate.dict) == pageDict)
                tempPages_.Find(page)->loaded = &candidate;
        }
    }
    void NDXPageParse(NdxPage page, NdxParseOptions) override {
        if (TempPage* temp = tempPages_.Find(page))
            temp->parsed = temp->loaded != nullptr;
        else
            PageOf(page)->parsed = true;
    }
    int NDXPageCountObjects(NdxPage page) override {
        return PdfPage(page).parsed ? static_cast<int>(PdfPage(page).objects.size()) : 0;
    }
    NdxPosition NDXPageGetFirstObjectPos(NdxPage page) override {
        return PdfPage(page).parsed && !PdfPage(page).objects.empty()
                   ? reinterpret_cast<NdxPosition>(1)
                   : nullptr;
    }
    NdxPageObject NDXPageGetNextObject(NdxPage page, NdxPosition* position) override {
        auto index = reinterpret_cast<std::uintptr_t>(*position) - 1;
        auto& objects = PdfPage(page).objects;
        if (index >= objects.size())
            return nullptr;
        *position = index + 1 < objects.size() ? reinterpret_cast<NdxPosition>(index + 2) : nullptr;
        return reinterpret_cast<NdxPageObject>(&objects[index]);
    }
    int NDXPageObjectGetType(NdxPageObject o) override { return *reinterpret_cast<int*>(o); }
    void NDXPageGetTextLines(HostStringArray out, NdxDoc doc, NdxObject pageDict, int a,
                             int b) override {
        textLineArgs.emplace_back(a, b);
        for (FakePage& page : H<FakeDoc*>(doc)->pages) {
            if (reinterpret_cast<NdxObject>(page.dict) != pageDict)
                continue;
            for (const FakeLine& line : page.lines)
                stringArrays_.Find(out)->push_back(line.text);
        }
    }
    NdxParseOptions NDXParseOptionsNew(int, int, int, int) override {
        return parseOptions_.Add<NdxParseOptions>();
    }
    void NDXParseOptionsDestroy(NdxParseOptions o) override { parseOptions_.Erase(o); }
    int NDXObjectGetType(NdxObject object) override {
        const FakeObject* fake = Object(object);
        // By FakeObject::Kind, in its order.
        static constexpr int kTypes[] = {kNdxObjectNumber,     kNdxObjectString,
                                         kNdxObjectName,       kNdxObjectArray,
                                         kNdxObjectDictionary, kNdxObjectReference};
        return fake != nullptr ? kTypes[static_cast<int>(fake->kind)] : kNdxObjectNull;
    }
    void NDXObjectDestroy(NdxObject object) override {
        if (ownedDicts_.erase(object) == 0)
            Log("DestroyNotOwned");
    }
    NdxObject NDXObjectGetDirect(NdxObject object) override {
        const FakeObject* fake = Object(object);
        return fake != nullptr && fake->kind == FakeObject::Kind::kRef ? H<NdxObject>(fake->target)
                                                                       : object;
    }
    void NDXStringGetBytes(NdxObject string, HostByteString out) override {
        const FakeObject* fake = Object(string);
        B(out) = fake != nullptr ? fake->text : std::string();
    }
    NdxObject NDXArrayNew() override { return H<NdxObject>(NewObject(FakeObject::Kind::kArray)); }
    int NDXArrayCount(NdxObject a) override { return static_cast<int>(Object(a)->items.size()); }
    float NDXArrayGetNumber(NdxObject array, int index) override {
        FakeObject** item = Item(Object(array)->items, index);
        return item != nullptr ? static_cast<float>((*item)->number) : 0.0f;
    }
    void NDXArrayAddNumber(NdxObject array, float value) override {
        Object(array)->items.push_back(NewObject(FakeObject::Kind::kNumber, value));
    }
    NdxObject NDXDictNew() override {
        FakeObject* dict = NewObject(FakeObject::Kind::kDict);
        dict->label = "annot";
        ownedDicts_.insert(dict);
        return H<NdxObject>(dict);
    }
    NdxObject NDXDictGet(NdxObject dict, const char* key) override {
        const FakeObject* fake = Object(dict);
        return fake != nullptr ? H<NdxObject>(fake->Get(key)) : nullptr;
    }
    // Strings and names both read as their text; a document's information dictionary is a plain
    // map.
    void NDXDictGetString(NdxObject dict, const char* key, HostByteString out) override {
        const FakeObject* fake = Object(dict);
        if (fake == nullptr) {  // the information dictionary of a FakeDoc
            const auto& info = *reinterpret_cast<std::map<std::string, std::string>*>(dict);
            const auto found = info.find(key);
            B(out) = found != info.end() ? found->second : std::string();
            return;
        }
        const FakeObject* value = fake->Get(key);
        B(out) = value != nullptr && (value->kind == FakeObject::Kind::kString ||
                                      value->kind == FakeObject::Kind::kName)
                     ? value->text
                     : std::string();
    }
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
        SetEntry(dict, key, NewObject(FakeObject::Kind::kNumber, value));
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
    // Flattening turns every filled text field into a line of its page.
    void NDXFlattenerAddPage(NdxFlattener, NdxPage page, int a, int b) override {
        FakePage& flat = PdfPage(page);
        flattenerCalls.push_back("page" + std::to_string(flat.index) + ":" + std::to_string(a) +
                                 "," + std::to_string(b));
        for (const FakeControl& control : flat.controls) {
            if (control.type == kNdxControlTextField && !control.value.empty())
                flat.lines.push_back(FakeLine{control.value});
        }
        flat.controls.clear();
    }
    void NDXFlattenerDone(NdxFlattener) override { flattenerCalls.push_back("done"); }

    // Annotations and undo
    // The annotation keeps a copy: the dictionary stays the caller's.
    NdxAnnot NDXAnnotNew(NdxObject dict) override {
        FakeObject* copy = NewObject(FakeObject::Kind::kDict);
        *copy = *Object(dict);
        return H<NdxAnnot>(NewAnnot(copy));
    }
    NdxObject NDXAnnotGetDict(NdxAnnot annot) override { return H<NdxObject>(A(annot)->dict); }
    void NDXAnnotGetSubtype(NdxAnnot annot, HostByteString out) override {
        const FakeObject* subtype = A(annot)->dict->Get("Subtype");
        B(out) = subtype != nullptr ? subtype->text : std::string();
    }
    NdxRect NDXAnnotGetRect(NdxAnnot annot) override {
        const FakeObject* rect = A(annot)->dict->Get("Rect");
        if (rect == nullptr || rect->items.size() != 4)
            return NdxRect{0, 0, 0, 0};
        const auto n = [&](std::size_t i) { return static_cast<float>(rect->items[i]->number); };
        return NdxRect{n(0), n(1), n(2), n(3)};
    }
    NdxAnnotList NDXAnnotListGet(NdxPage page) override { return H<NdxAnnotList>(PageOf(page)); }
    NdxAnnot NDXAnnotListGetAt(NdxAnnotList l, int i) override {
        return H<NdxAnnot>(Annots(l).at(i));
    }
    int NDXAnnotListCount(NdxAnnotList l) override { return static_cast<int>(Annots(l).size()); }
    void NDXAnnotListInsert(NdxAnnotList list, int index, NdxAnnot annot) override {
        if (!listInsertIgnored)
            Annots(list).insert(Annots(list).begin() + index, A(annot));
    }
    NdxAnnot NDXHostAnnotGetPdfAnnot(HostAnnot annot) override { return H<NdxAnnot>(annot); }
    HostUndoManager HostUndoGetManager() override { return H<HostUndoManager>(&undoManager_); }
    void HostUndoRecordAddAnnot(HostUndoManager, HostAnnot, int a, int b) override {
        Log("UndoAdd", a, b);
    }
    void HostUndoRecordDeleteAnnot(HostUndoManager, HostAnnot, int a) override {
        Log("UndoDelete", a);
    }

    // Forms
    NdxFormField NDXInterFormGetField(NdxInterForm form, int, const wchar_t* name) override {
        for (FakePage& page : Doc(form).pages) {
            for (FakeControl& control : page.controls) {
                if (control.name == name)
                    return H<NdxFormField>(&control);
            }
        }
        return nullptr;
    }
    int NDXInterFormCountPageControls(NdxInterForm, NdxPage page) override {
        return static_cast<int>(PageOf(page)->controls.size());
    }
    NdxFormControl NDXInterFormGetPageControl(NdxInterForm, NdxPage page, int index) override {
        return H<NdxFormControl>(&PageOf(page)->controls.at(index));
    }
    void NDXInterFormSetUpdateAP(NdxInterForm, int update) override { Log("SetUpdateAP", update); }
    void NDXFormFieldGetFullName(NdxFormField f, HostWideString out) override {
        W(out) = C(f)->name;
    }
    void NDXFormFieldGetValue(NdxFormField f, HostWideString out) override { W(out) = C(f)->value; }
    int NDXFormFieldSetValue(NdxFormField field, const wchar_t* value, int notify) override {
        Log("SetValue", notify);
        if (refuseValue)
            return 0;
        C(field)->value = value;
        return 1;
    }
    int NDXFormControlGetType(NdxFormControl control) override { return C(control)->type; }
    NdxFormField NDXFormControlGetField(NdxFormControl c) override { return H<NdxFormField>(c); }
    void NDXFormControlGetRect(NdxFormControl c, NdxRect* out) override { *out = C(c)->rect; }
    NdxInterForm NDXInterFormFromEnvironment(HostFormEnv env) override {
        return Doc(env).hasInterForm ? H<NdxInterForm>(env) : nullptr;
    }

    // Text search
    NdxTextPage NDXTextPageNew(NdxPage page, int) override {
        return textPages_.Add<NdxTextPage>(TextPage{PageOf(page), false});
    }
    void NDXTextPageDestroy(NdxTextPage t) override { textPages_.Erase(t); }
    void NDXTextPageParse(NdxTextPage t) override { textPages_.Find(t)->parsed = true; }
    int NDXTextPageIsParsed(NdxTextPage t) override { return textPages_.Find(t)->parsed; }
    NdxTextFind NDXTextFindNew(NdxTextPage textPage) override {
        const TextPage* page = textPages_.Find(textPage);
        return page->parsed ? finders_.Add<NdxTextFind>(Finder{page->page, {}, -1}) : nullptr;
    }
    void NDXTextFindDestroy(NdxTextFind find) override { finders_.Erase(find); }
    int NDXTextFindStart(NdxTextFind find, const wchar_t* text, uint32_t flags, int) override {
        Finder* finder = finders_.Find(find);
        if (finder->page->startFails || *text == L'\0')
            return 0;
        finder->matches = FindIn(*finder->page, text, flags);
        finder->position = -1;
        return 1;
    }
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
    void NDXFieldTextFindGetRects(NdxFieldFind f, NdxRectArray rects) override { Rects(f, rects); }

    // Redaction
    int NDXRedactApplyAll(HostDoc doc, int flags) override {
        Log("ApplyAll", flags);
        return ApplyRedacts(doc, std::nullopt);
    }
    int NDXRedactApplyList(HostDoc doc, HostPtrArray annots, int flags) override {
        const auto& listed = *ptrArrays_.Find(annots);
        Log("ApplyList", listed.size(), flags);
        return ApplyRedacts(doc, std::set<const void*>(listed.begin(), listed.end()));
    }
    int NDXRedactApplyBatch(HostDoc doc, int flags, uint32_t options) override {
        Log("ApplyBatch", flags, options);
        return ApplyRedacts(doc, std::nullopt);
    }

  protected:
    // Calls the hook at `word` of every registered document event record.
    template <typename Hook, typename... Args>
    void FireDocHook(std::size_t word, Args... args) {
        const auto records = docEventRecords;
        for (HostDocEventRecord* record : records) {
            if (void* fn = record->word(word))
                reinterpret_cast<Hook>(fn)(record->word(kDocEventClientData), args...);
        }
    }

  private:
    FakeObject* NewObject(FakeObject::Kind kind, double number = 0) {
        FakeObject* object = objects_.emplace_back(std::make_unique<FakeObject>()).get();
        object->kind = kind;
        object->number = number;
        objectSet_.insert(object);
        return object;
    }
    FakeObject* Object(NdxObject handle) const {
        const auto* object = reinterpret_cast<const FakeObject*>(handle);
        return objectSet_.count(object) != 0 ? const_cast<FakeObject*>(object) : nullptr;
    }
    void SetEntry(NdxObject dict, const char* key, FakeObject* value) {
        FakeObject* object = Object(dict);
        if (object == nullptr || value == nullptr)
            return;
        for (auto& entry : object->entries) {
            if (entry.first == key) {
                entry.second = value;
                return;
            }
        }
        object->entries.emplace_back(key, value);
    }
    // A new object of `kind` set under `key`, for the caller to fill.
    FakeObject* SetNew(NdxObject dict, const char* key, FakeObject::Kind kind) {
        FakeObject* value = NewObject(kind);
        SetEntry(dict, key, value);
        return value;
    }
    FakeObject* NewRect(const NdxRect& rect);  // [left bottom right top]
    // Records a notable call as "Name:argument:...".
    template <typename... Args>
    void Log(std::string call, Args... args) {
        ((call += ":" + std::to_string(args)), ...);
        calls.push_back(std::move(call));
    }
    // Removes the Redact annotations, or those of them in `only`.
    int ApplyRedacts(HostDoc doc, const std::optional<std::set<const void*>>& only) {
        if (applyFails)
            return 0;
        for (FakePage& page : Doc(doc).pages) {
            std::erase_if(page.annots, [&](FakeAnnot* annot) {
                const FakeObject* subtype = annot->dict->Get("Subtype");
                const bool gone = subtype != nullptr && subtype->text == "Redact" &&
                                  (!only || only->count(annot) != 0);
                annot->alive = annot->alive && !gone;
                return gone;
            });
        }
        return 1;
    }
    std::vector<FakeAnnot*>& Annots(const void* page) { return PageOf(page)->annots; }
    FakePage* PageOf(const void* page) {
        if (const TempPage* temp = tempPages_.Find(page))
            return temp->loaded;
        return static_cast<FakePage*>(const_cast<void*>(page));
    }
    FakeAnnot* NewAnnot(FakeObject* dict) {
        annots_.push_back(std::make_unique<FakeAnnot>());
        annots_.back()->dict = dict;
        return annots_.back().get();
    }
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
