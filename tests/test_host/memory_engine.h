// MemoryEngine: the test host's editor, held in memory. A document is a file path and pages of
// text lines; character c of line l on a page stands in the box (10c, 700 - 20l, 10c + 10,
// 710 - 20l), characters numbered line after line with no separator. PDF objects (page and
// annotation dictionaries, arrays, strings, names, numbers) keep their entries in the order they
// were set. Every object handed to the plug-in lives in a handle pool, so a stale or foreign
// handle is not found and the operation answers its neutral result.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "extension_registry.h"
#include "handle_pool.h"
#include "host_abi.h"

namespace testhost {

using pdfhost::HandlePool;

// Handles of different types that name the same record share the value.
template <typename To, typename From>
To Same(From handle) {
    return reinterpret_cast<To>(reinterpret_cast<uintptr_t>(handle));
}

struct PdfObject {
    enum class Kind { kNumber, kString, kName, kArray, kDict, kReference };
    Kind kind = Kind::kDict;
    double number = 0;
    std::string text;  // string bytes or name
    std::vector<NdxObject> items;
    std::vector<std::pair<std::string, NdxObject>> entries;  // in the order set
    NdxObject target = nullptr;                              // of a reference
    bool attached = false;  // an entry of another object or an annotation: not the plug-in's
};

struct Annotation {
    HostDoc doc = nullptr;
    int page = 0;
    NdxObject dict = nullptr;
};

struct Page {
    std::vector<std::wstring> lines;
    NdxObject dict = nullptr;
    HostPageView view = nullptr;    // also the page's NdxPage and NdxAnnotList
    std::vector<HostAnnot> annots;  // in list order
    bool parsed = false;
};

struct Document {
    std::wstring path;
    std::vector<Page> pages;
    NdxObject info = nullptr;
    bool modified = false;
    int currentPage = 0;
    // The text select tool's selection: the page and its rectangles.
    int selectedPage = -1;
    std::vector<NdxRect> selection;
};

struct TextMatch {
    int start = 0;
    int count = 0;
    std::vector<NdxRect> rects;
};

struct TextFinder {
    HostPageView page = nullptr;
    std::vector<TextMatch> matches;
    int position = -1;
};

struct TextPage {
    HostPageView page = nullptr;
    bool parsed = false;
};

struct RibbonNode {
    std::wstring name;
    std::wstring title;
    HostRibbonExecuteProc execute = nullptr;
    std::vector<HostRibbonItem> children;
};

class MemoryEngine {
  public:
    explicit MemoryEngine(std::filesystem::path userData);
    ~MemoryEngine();
    MemoryEngine(const MemoryEngine&) = delete;
    MemoryEngine& operator=(const MemoryEngine&) = delete;

    // The engine the table functions serve; null outside the life of one.
    static MemoryEngine* Current();

    // Opens a document of the given pages as the editor does: the open hooks run, then it
    // becomes the active document.
    HostDoc Open(std::wstring path, std::vector<std::vector<std::wstring>> pages);

    // Objects
    NdxObject NewObject(PdfObject::Kind kind);
    PdfObject* Object(NdxObject handle) { return objects.Find(handle); }
    NdxObject Entry(NdxObject dict, const std::string& key);
    void SetEntry(NdxObject dict, const std::string& key, NdxObject value);
    NdxObject NewNumberArray(const std::vector<float>& numbers);
    std::optional<NdxRect> RectOf(NdxObject dict, const std::string& key);

    // Documents, pages and annotations; null for unknown handles.
    Document* DocumentOf(const void* handle) { return documents.Find(Same<HostDoc>(handle)); }
    struct PageRef {
        HostDoc doc = nullptr;
        int index = 0;
    };
    Page* PageOf(const void* view);
    std::optional<PageRef> PageRefOf(const void* view);
    HostAnnot AddAnnot(HostPageView view, NdxObject dict);
    bool DeleteAnnot(HostPageView view, HostAnnot annot);
    Annotation* AnnotOf(const void* handle) { return annots.Find(Same<HostAnnot>(handle)); }
    void SetModified(HostDoc doc);

    // The matches of `text` on a page, with the editor's search flags.
    std::vector<TextMatch> Find(const Page& page, const std::wstring& text, uint32_t flags) const;

    // Calls one word of every registered document event record.
    template <typename Hook, typename... Args>
    void FireDocHook(std::size_t word, Args... args) {
        const std::vector<HostDocEventRecord*> records = docEventRecords;
        for (HostDocEventRecord* record : records) {
            if (void* hook = record->word(word))
                reinterpret_cast<Hook>(hook)(record->word(kDocEventClientData), args...);
        }
    }

    // Application
    pdfhost::ExtensionRegistry extensions;
    std::filesystem::path userData;
    std::wstring language = L"en-US";
    // Where the plug-in looks for its service document: a local port that refuses at once.
    std::wstring accountServer = L"http://127.0.0.1:9";
    HostDoc active = nullptr;
    std::vector<HostDoc> open;
    std::vector<HostDocEventRecord*> docEventRecords;
    std::vector<HostAppEventRecord*> appEventRecords;
    std::vector<HostPaneRecord*> paneRecords;
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> preferences;
    std::map<std::pair<std::wstring, std::wstring>, int> intPreferences;
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> pluginSettings;
    int usageReports = 0;
    int liveResources = 0;

    // Ribbon: the bar of the one main frame is node `ribbonBar`.
    HandlePool<HostRibbonItem, RibbonNode> ribbon;
    HostRibbonItem ribbonBar = nullptr;
    HostRibbonItem FindChild(HostRibbonItem parent, const std::wstring& name);
    HostRibbonItem AddChild(HostRibbonItem parent, const std::wstring& name,
                            const std::wstring& title);

    // Pools of what the plug-in holds by handle.
    HandlePool<HostDoc, Document> documents;
    HandlePool<HostPageView, PageRef> pages;
    HandlePool<HostAnnot, Annotation> annots;
    HandlePool<NdxObject, PdfObject> objects;
    HandlePool<HostWideString, std::wstring> wideStrings;
    HandlePool<HostByteString, std::string> byteStrings;
    HandlePool<NdxRectArray, std::vector<NdxRect>> rectArrays;
    HandlePool<HostPtrArray, std::vector<void*>> ptrArrays;
    HandlePool<HostMap, std::map<const void*, void*>> maps;
    HandlePool<NdxTextPage, TextPage> textPages;
    HandlePool<NdxTextFind, TextFinder> finders;
    HandlePool<NdxParseOptions, int> parseOptions;
    HandlePool<HostResources, int> resources;
    HandlePool<HostUndoManager, int> undoManagers;
    HostUndoManager undo = nullptr;
};

}  // namespace testhost
