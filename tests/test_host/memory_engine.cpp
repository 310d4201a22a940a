#include "memory_engine.h"

#include <algorithm>
#include <cwctype>

namespace testhost {
namespace {

MemoryEngine* g_current = nullptr;

constexpr float kCharWidth = 10;
constexpr float kLineHeight = 20;
constexpr float kFirstLineBottom = 700;
constexpr float kPageWidth = 612;
constexpr float kPageHeight = 792;

NdxRect CharBox(int line, int column) {
    const float left = kCharWidth * static_cast<float>(column);
    const float bottom = kFirstLineBottom - kLineHeight * static_cast<float>(line);
    return NdxRect{left, bottom, left + kCharWidth, bottom + kCharWidth};
}

bool IsWordChar(wchar_t c) {
    return std::iswalnum(static_cast<wint_t>(c)) != 0;
}

bool SameChar(wchar_t a, wchar_t b, bool matchCase) {
    if (matchCase)
        return a == b;
    return std::towlower(static_cast<wint_t>(a)) == std::towlower(static_cast<wint_t>(b));
}

}  // namespace

MemoryEngine::MemoryEngine(std::filesystem::path userDataFolder)
    : userData(std::move(userDataFolder)) {
    ribbonBar = ribbon.Emplace();
    undo = undoManagers.Emplace(0);
    g_current = this;
}

MemoryEngine::~MemoryEngine() {
    if (g_current == this)
        g_current = nullptr;
}

MemoryEngine* MemoryEngine::Current() {
    return g_current;
}

HostDoc MemoryEngine::Open(std::wstring path, std::vector<std::vector<std::wstring>> texts) {
    FireDocHook<HostDocHookNoDoc>(kDocEventWillOpen);
    const HostDoc doc = documents.Emplace();
    Document& document = *documents.Find(doc);
    document.path = std::move(path);
    document.info = NewObject(PdfObject::Kind::kDict);
    for (const char* key : {"CreationDate", "ModDate"}) {
        const NdxObject date = NewObject(PdfObject::Kind::kString);
        Object(date)->text = "D:20260102030405Z";
        SetEntry(document.info, key, date);
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        Page page;
        page.lines = std::move(texts[i]);
        page.dict = NewObject(PdfObject::Kind::kDict);
        const NdxObject type = NewObject(PdfObject::Kind::kName);
        Object(type)->text = "Page";
        SetEntry(page.dict, "Type", type);
        SetEntry(page.dict, "MediaBox", NewNumberArray({0, 0, kPageWidth, kPageHeight}));
        page.view = pages.Emplace(PageRef{doc, static_cast<int>(i)});
        document.pages.push_back(std::move(page));
    }
    open.push_back(doc);
    FireDocHook<HostDocHook>(kDocEventDidOpen, doc);
    active = doc;
    FireDocHook<HostDocHook>(kDocEventActivate, doc);
    return doc;
}

NdxObject MemoryEngine::NewObject(PdfObject::Kind kind) {
    PdfObject object;
    object.kind = kind;
    return objects.Emplace(std::move(object));
}

NdxObject MemoryEngine::Entry(NdxObject dict, const std::string& key) {
    const PdfObject* object = Object(dict);
    if (object == nullptr || object->kind != PdfObject::Kind::kDict)
        return nullptr;
    for (const auto& [name, value] : object->entries) {
        if (name == key)
            return value;
    }
    return nullptr;
}

void MemoryEngine::SetEntry(NdxObject dict, const std::string& key, NdxObject value) {
    PdfObject* object = Object(dict);
    PdfObject* entry = Object(value);
    if (object == nullptr || object->kind != PdfObject::Kind::kDict || entry == nullptr)
        return;
    entry->attached = true;
    for (auto& [name, current] : object->entries) {
        if (name == key) {
            current = value;
            return;
        }
    }
    object->entries.emplace_back(key, value);
}

NdxObject MemoryEngine::NewNumberArray(const std::vector<float>& numbers) {
    const NdxObject array = NewObject(PdfObject::Kind::kArray);
    for (const float number : numbers) {
        const NdxObject item = NewObject(PdfObject::Kind::kNumber);
        Object(item)->number = number;
        Object(item)->attached = true;
        Object(array)->items.push_back(item);
    }
    return array;
}

std::optional<NdxRect> MemoryEngine::RectOf(NdxObject dict, const std::string& key) {
    const PdfObject* array = Object(Entry(dict, key));
    if (array == nullptr || array->kind != PdfObject::Kind::kArray || array->items.size() != 4)
        return std::nullopt;
    float numbers[4] = {};
    for (std::size_t i = 0; i < 4; ++i) {
        const PdfObject* item = Object(array->items[i]);
        if (item == nullptr || item->kind != PdfObject::Kind::kNumber)
            return std::nullopt;
        numbers[i] = static_cast<float>(item->number);
    }
    return NdxRect{numbers[0], numbers[1], numbers[2], numbers[3]};
}

std::optional<MemoryEngine::PageRef> MemoryEngine::PageRefOf(const void* view) {
    const PageRef* ref = pages.Find(Same<HostPageView>(view));
    if (ref == nullptr || documents.Find(ref->doc) == nullptr)
        return std::nullopt;
    return *ref;
}

Page* MemoryEngine::PageOf(const void* view) {
    const std::optional<PageRef> ref = PageRefOf(view);
    if (!ref)
        return nullptr;
    Document& document = *documents.Find(ref->doc);
    return &document.pages.at(static_cast<std::size_t>(ref->index));
}

HostAnnot MemoryEngine::AddAnnot(HostPageView view, NdxObject dict) {
    const std::optional<PageRef> ref = PageRefOf(view);
    PdfObject* object = Object(dict);
    if (!ref || object == nullptr || object->kind != PdfObject::Kind::kDict)
        return nullptr;
    object->attached = true;
    const HostAnnot annot = annots.Emplace(Annotation{ref->doc, ref->index, dict});
    PageOf(view)->annots.push_back(annot);
    return annot;
}

bool MemoryEngine::DeleteAnnot(HostPageView view, HostAnnot annot) {
    Page* page = PageOf(view);
    if (page == nullptr)
        return false;
    const auto found = std::find(page->annots.begin(), page->annots.end(), annot);
    if (found == page->annots.end())
        return false;
    page->annots.erase(found);
    annots.Erase(annot);
    return true;
}

void MemoryEngine::SetModified(HostDoc doc) {
    Document* document = DocumentOf(doc);
    if (document == nullptr || document->modified)
        return;
    document->modified = true;
    FireDocHook<HostDocHook>(kDocEventModified, doc);
}

std::vector<TextMatch> MemoryEngine::Find(const Page& page, const std::wstring& text,
                                          uint32_t flags) const {
    std::vector<TextMatch> matches;
    if (text.empty())
        return matches;
    const bool matchCase = (flags & kNdxFindMatchCase) != 0;
    const bool wholeWord = (flags & kNdxFindWholeWord) != 0;
    int firstChar = 0;
    for (std::size_t l = 0; l < page.lines.size(); ++l) {
        const std::wstring& line = page.lines[l];
        for (std::size_t at = 0; at + text.size() <= line.size(); ++at) {
            const bool equal =
                std::equal(text.begin(), text.end(), line.begin() + at,
                           [&](wchar_t a, wchar_t b) { return SameChar(a, b, matchCase); });
            if (!equal)
                continue;
            const std::size_t end = at + text.size();
            if (wholeWord && ((at > 0 && IsWordChar(line[at - 1])) ||
                              (end < line.size() && IsWordChar(line[end])))) {
                continue;
            }
            const NdxRect first = CharBox(static_cast<int>(l), static_cast<int>(at));
            const NdxRect last = CharBox(static_cast<int>(l), static_cast<int>(end - 1));
            matches.push_back(TextMatch{firstChar + static_cast<int>(at),
                                        static_cast<int>(text.size()),
                                        {NdxRect{first.left, first.bottom, last.right, last.top}}});
        }
        firstChar += static_cast<int>(line.size());
    }
    return matches;
}

HostRibbonItem MemoryEngine::FindChild(HostRibbonItem parent, const std::wstring& name) {
    const RibbonNode* node = ribbon.Find(parent);
    if (node == nullptr)
        return nullptr;
    for (const HostRibbonItem child : node->children) {
        if (ribbon.Find(child)->name == name)
            return child;
    }
    return nullptr;
}

HostRibbonItem MemoryEngine::AddChild(HostRibbonItem parent, const std::wstring& name,
                                      const std::wstring& title) {
    RibbonNode* node = ribbon.Find(parent);
    if (node == nullptr)
        return nullptr;
    const HostRibbonItem child = ribbon.Emplace(RibbonNode{name, title, nullptr, {}});
    // The pool keeps each record at its address, so `node` stays valid across Emplace.
    node->children.push_back(child);
    return child;
}

}  // namespace testhost
