// FakePdfHost: a FakeHost whose documents have text, form controls, annotations and a view, for
// the search, marking, annotation, redaction and form commands. Characters of a page are numbered
// line after line with no separator; character c of line l stands in the box
// (10c, 700 - 20l, 10c + 10, 710 - 20l). Every object the plug-in makes through a ...New operation
// is counted until it is destroyed, and every dictionary keeps its entries in the order they were
// set, so tests can read back exactly what the plug-in wrote.
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "fake_host.h"

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

struct FakePdfPage {
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

struct FakePdf {
    std::vector<FakePdfPage> pages;
    bool hasView = true;
    bool hasTool = true;
    bool hasForm = true;       // the document has a form environment
    bool hasInterForm = true;  // ... and the environment an interactive form
    int currentPage = 0;
};

// A selection the text select tool holds: rectangles on one page, or ranges per page.
struct FakeSelection {
    int page = -1;
    std::vector<NdxRect> rects;
    std::map<int, std::pair<int32_t, int32_t>> ranges;
};

class FakePdfHost : public FakeHost {
  public:
    FakePdfHost();
    ~FakePdfHost() override;

    HostDoc OpenPdf(FakePdf pdf, std::wstring path = L"/docs/test.pdf");
    FakePdf& Pdf(HostDoc doc) { return *models_.at(doc); }
    FakePdfPage& Page(HostDoc doc, int index) { return Pdf(doc).pages.at(index); }
    // The user deletes an annotation in the editor.
    void UserDeletes(HostDoc doc, int page, std::size_t position);
    // The user draws a Redact annotation of their own.
    void UserRedacts(HostDoc doc, int page, const std::string& uniqueName);
    // Objects made through ...New and not destroyed or handed over.
    int LiveHandles() const;

    // Knobs and records
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

    // Strings
    void HostByteStringSet(HostByteString str, const char* text) override;
    void HostByteStringAppendText(HostByteString str, const char* text) override;
    int HostByteStringEquals(HostByteString a, HostByteString b) override;
    void HostTextToPdfString(const wchar_t* text, int length, int, HostByteString out) override;

    // Containers
    HostMap HostMapNew(int capacity) override;
    void HostMapDestroy(HostMap map) override;
    void HostMapSet(HostMap map, const void* key, void* value) override;
    HostPtrArray HostPtrArrayNew() override;
    void HostPtrArrayDestroy(HostPtrArray array) override;
    int HostPtrArrayGetCount(HostPtrArray array) override;
    void* HostPtrArrayGetAt(HostPtrArray array, int index) override;
    void HostPtrArrayAdd(HostPtrArray array, void* element) override;
    NdxRectArray NDXRectArrayNew() override;
    void NDXRectArrayDestroy(NdxRectArray array) override;
    int NDXRectArrayGetCount(NdxRectArray array) override;
    NdxRect NDXRectArrayGetAt(NdxRectArray array, int index) override;
    void NDXRectArrayAdd(NdxRectArray array, float l, float b, float r, float t) override;
    void NDXRectInflate(NdxRect* rect, float l, float b, float r, float t) override;

    // Application
    HostTool HostAppGetToolByName(const char* name) override;
    void HostAppSetCurrentTool(HostTool tool, int persistent) override;
    HostWindow HostAppGetMainWindow() override;
    int HostMessageBox(const wchar_t* text, int buttons, const wchar_t* title, int* check,
                       HostWindow parent) override;

    // Documents, views and selection
    void HostDocSetChanged(HostDoc doc) override;
    HostDocView HostDocGetView(HostDoc doc) override;
    HostTextSelectTool HostDocGetTextSelectTool(HostDoc doc) override;
    void HostDocTouchPage(HostDoc doc, int pageIndex) override;
    int HostDocIsAnnotAlive(HostDoc doc, HostAnnot annot) override;
    HostFormEnv HostDocGetInterForm(HostDoc doc) override;
    int HostDocReplaceText(HostDoc doc, int page, int ordinal, const wchar_t* text) override;
    HostPageView HostDocGetPageView(HostDoc doc, int pageIndex) override;
    void HostDocRefreshPageAnnots(HostDoc doc, int pageIndex, int flags) override;
    HostPageView HostDocViewGetPageView(HostDocView view, int pageIndex) override;
    void HostDocViewGotoPage(HostDocView view, int pageIndex) override;
    HostPageView HostDocViewGetCurrentPageView(HostDocView view) override;
    void HostDocViewScrollTo(HostDocView view, int x, int y) override;
    void HostDocViewInvalidateRect(HostDocView view, int l, int t, int r, int b) override;
    int HostPageViewCountAnnots(HostPageView page) override;
    void HostPageViewPointToDevice(HostPageView page, const NdxPoint* point, int* x,
                                   int* y) override;
    NdxRect HostPageViewGetVisibleRect(HostPageView page) override;
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

    // PDF pages and objects
    NdxObject NDXDocGetPage(NdxDoc doc, int pageIndex) override;
    NdxPage NDXPageNew() override;
    void NDXPageDestroy(NdxPage page) override;
    int NDXPageIsParsed(NdxPage page) override;
    void NDXPageLoad(NdxPage page, NdxDoc doc, NdxObject pageDict, int flags) override;
    void NDXPageParse(NdxPage page, NdxParseOptions options) override;
    NdxParseOptions NDXParseOptionsNew(int a, int b, int c, int d) override;
    void NDXParseOptionsDestroy(NdxParseOptions options) override;
    int NDXObjectGetType(NdxObject object) override;
    void NDXObjectDestroy(NdxObject object) override;
    NdxObject NDXObjectGetDirect(NdxObject object) override;
    void NDXStringGetBytes(NdxObject string, HostByteString out) override;
    NdxObject NDXArrayNew() override;
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

    // Annotations and undo
    NdxAnnot NDXAnnotNew(NdxObject dict) override;
    NdxObject NDXAnnotGetDict(NdxAnnot annot) override;
    void NDXAnnotGetSubtype(NdxAnnot annot, HostByteString out) override;
    NdxRect NDXAnnotGetRect(NdxAnnot annot) override;
    NdxAnnotList NDXAnnotListGet(NdxPage page) override;
    NdxAnnot NDXAnnotListGetAt(NdxAnnotList list, int index) override;
    int NDXAnnotListCount(NdxAnnotList list) override;
    void NDXAnnotListInsert(NdxAnnotList list, int index, NdxAnnot annot) override;
    NdxAnnot NDXHostAnnotGetPdfAnnot(HostAnnot annot) override;
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
    int NDXFormControlGetType(NdxFormControl control) override;
    NdxFormField NDXFormControlGetField(NdxFormControl control) override;
    void NDXFormControlGetRect(NdxFormControl control, NdxRect* out) override;
    NdxInterForm NDXInterFormFromEnvironment(HostFormEnv env) override;

    // Text search
    NdxTextPage NDXTextPageNew(NdxPage page, int flags) override;
    void NDXTextPageDestroy(NdxTextPage textPage) override;
    void NDXTextPageParse(NdxTextPage textPage) override;
    int NDXTextPageIsParsed(NdxTextPage textPage) override;
    NdxTextFind NDXTextFindNew(NdxTextPage textPage) override;
    void NDXTextFindDestroy(NdxTextFind find) override;
    int NDXTextFindStart(NdxTextFind find, const wchar_t* text, uint32_t flags, int) override;
    int NDXTextFindNext(NdxTextFind find) override;
    void NDXTextFindGetRects(NdxTextFind find, NdxRectArray rects) override;
    int NDXTextFindGetCharIndex(NdxTextFind find) override;
    int NDXTextFindGetCharCount(NdxTextFind find) override;
    NdxFieldFind NDXFieldTextFindNew(NdxDoc doc, NdxPage page) override;
    void NDXFieldTextFindDestroy(NdxFieldFind find) override;
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
        FakePdfPage* page = nullptr;
        std::vector<Match> matches;
        int position = -1;
    };
    struct TextPage {
        FakePdfPage* page = nullptr;
        bool parsed = false;
    };
    struct TempPage {
        FakePdfPage* loaded = nullptr;
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

    FakeObject* NewObject(FakeObject::Kind kind);
    FakeObject* Object(NdxObject handle) const;
    void SetEntry(NdxObject dict, const char* key, FakeObject* value);
    FakePdf* ModelOf(const void* doc);
    FakePdfPage* PageOf(const void* page);
    FakeAnnot* NewAnnot(FakeObject* dict);
    void RemoveRedacts(FakePdf& pdf, const std::set<const void*>* only);
    std::vector<Match> FindIn(const FakePdfPage& page, const std::wstring& text,
                              uint32_t flags) const;

    std::map<HostDoc, std::unique_ptr<FakePdf>> models_;
    std::deque<std::unique_ptr<FakeObject>> objects_;
    std::set<const FakeObject*> objectSet_;
    std::deque<std::unique_ptr<FakeAnnot>> annots_;
    std::set<const void*> ownedDicts_;
    Pool<std::vector<NdxRect>> rectArrays_;
    Pool<std::vector<void*>> ptrArrays_;
    Pool<std::map<const void*, void*>> maps_;
    Pool<int> parseOptions_;
    Pool<TextPage> textPages_;
    Pool<Finder> finders_;
    Pool<Finder> fieldFinders_;
    Pool<TempPage> tempPages_;
    int undoManager_ = 0;
    int handTool_ = 0;
    int mainWindow_ = 0;
};
