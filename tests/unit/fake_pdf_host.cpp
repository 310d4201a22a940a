#include "fake_pdf_host.h"

#include <algorithm>
#include <cwctype>
#include <sstream>

#include "util/utf.h"

namespace {

std::string& B(HostByteString s) {
    return *reinterpret_cast<std::string*>(s);
}
std::wstring& W(HostWideString s) {
    return *reinterpret_cast<std::wstring*>(s);
}
FakeAnnot* A(const void* annot) {
    return static_cast<FakeAnnot*>(const_cast<void*>(annot));
}
FakeControl* C(const void* control) {
    return static_cast<FakeControl*>(const_cast<void*>(control));
}
template <typename Handle>
Handle H(const void* pointer) {
    return static_cast<Handle>(const_cast<void*>(pointer));
}

std::wstring Folded(std::wstring text, bool matchCase) {
    if (!matchCase) {
        for (wchar_t& c : text)
            c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
    }
    return text;
}

void Print(std::ostringstream& out, const FakeObject& object) {
    switch (object.kind) {
        case FakeObject::Kind::kNumber:
            out << object.number;
            break;
        case FakeObject::Kind::kString:
            out << "(" << object.text << ")";
            break;
        case FakeObject::Kind::kName:
            out << "/" << object.text;
            break;
        case FakeObject::Kind::kArray: {
            out << "[";
            for (std::size_t i = 0; i < object.items.size(); ++i) {
                out << (i > 0 ? " " : "");
                Print(out, *object.items[i]);
            }
            out << "]";
            break;
        }
        case FakeObject::Kind::kRef:
            out << "@" << object.target->label;
            break;
        case FakeObject::Kind::kDict:
            out << "<<" << Describe(object) << ">>";
            break;
    }
}

}  // namespace

FakeObject* FakeObject::Get(const std::string& key) const {
    for (const auto& [name, value] : entries) {
        if (name == key)
            return value;
    }
    return nullptr;
}

std::string Describe(const FakeObject& dict) {
    std::ostringstream out;
    for (std::size_t i = 0; i < dict.entries.size(); ++i) {
        out << (i > 0 ? " /" : "/") << dict.entries[i].first << " ";
        Print(out, *dict.entries[i].second);
    }
    return out.str();
}

FakePdfHost::FakePdfHost() = default;
FakePdfHost::~FakePdfHost() = default;

HostDoc FakePdfHost::OpenPdf(FakePdf pdf, std::wstring path) {
    auto model = std::make_unique<FakePdf>(std::move(pdf));
    for (std::size_t i = 0; i < model->pages.size(); ++i) {
        FakePdfPage& page = model->pages[i];
        page.index = static_cast<int>(i);
        page.dict = NewObject(FakeObject::Kind::kDict);
        page.dict->label = "page" + std::to_string(i);
        if (page.mediaBox) {
            FakeObject* box = NewObject(FakeObject::Kind::kArray);
            for (float n : {page.mediaBox->left, page.mediaBox->bottom, page.mediaBox->right,
                            page.mediaBox->top}) {
                box->items.push_back(NewObject(FakeObject::Kind::kNumber));
                box->items.back()->number = n;
            }
            page.dict->entries.emplace_back("MediaBox", box);
        }
    }
    FakeDoc doc = FileDoc(std::move(path));
    doc.pages.resize(model->pages.size());
    HostDoc handle = Open(std::move(doc));
    models_.emplace(handle, std::move(model));
    return handle;
}

void FakePdfHost::UserDeletes(HostDoc doc, int page, std::size_t position) {
    auto& annots = Page(doc, page).annots;
    annots.at(position)->alive = false;
    annots.erase(annots.begin() + static_cast<std::ptrdiff_t>(position));
}

void FakePdfHost::UserRedacts(HostDoc doc, int page, const std::string& uniqueName) {
    FakeObject* dict = NewObject(FakeObject::Kind::kDict);
    SetEntry(H<NdxObject>(dict), "Subtype", NewObject(FakeObject::Kind::kName));
    dict->Get("Subtype")->text = "Redact";
    if (!uniqueName.empty()) {
        SetEntry(H<NdxObject>(dict), "NM", NewObject(FakeObject::Kind::kString));
        dict->Get("NM")->text = uniqueName;
    }
    Page(doc, page).annots.push_back(NewAnnot(dict));
}

int FakePdfHost::LiveHandles() const {
    return static_cast<int>(
        ownedDicts_.size() + rectArrays_.items.size() + ptrArrays_.items.size() +
        maps_.items.size() + parseOptions_.items.size() + textPages_.items.size() +
        finders_.items.size() + fieldFinders_.items.size() + tempPages_.items.size());
}

FakeObject* FakePdfHost::NewObject(FakeObject::Kind kind) {
    objects_.push_back(std::make_unique<FakeObject>());
    objects_.back()->kind = kind;
    objectSet_.insert(objects_.back().get());
    return objects_.back().get();
}

FakeObject* FakePdfHost::Object(NdxObject handle) const {
    const auto* object = reinterpret_cast<const FakeObject*>(handle);
    return objectSet_.count(object) != 0 ? const_cast<FakeObject*>(object) : nullptr;
}

void FakePdfHost::SetEntry(NdxObject dict, const char* key, FakeObject* value) {
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

FakePdf* FakePdfHost::ModelOf(const void* doc) {
    const auto found = models_.find(H<HostDoc>(doc));
    return found != models_.end() ? found->second.get() : nullptr;
}

FakePdfPage* FakePdfHost::PageOf(const void* page) {
    if (const TempPage* temp = tempPages_.Find(page))
        return temp->loaded;
    return static_cast<FakePdfPage*>(const_cast<void*>(page));
}

FakeAnnot* FakePdfHost::NewAnnot(FakeObject* dict) {
    annots_.push_back(std::make_unique<FakeAnnot>());
    annots_.back()->dict = dict;
    return annots_.back().get();
}

std::vector<FakePdfHost::Match> FakePdfHost::FindIn(const FakePdfPage& page,
                                                    const std::wstring& text,
                                                    uint32_t flags) const {
    const bool matchCase = (flags & kNdxFindMatchCase) != 0;
    std::wstring all;
    std::vector<int> lineOf;
    std::vector<int> columnOf;
    for (std::size_t l = 0; l < page.lines.size(); ++l) {
        for (std::size_t c = 0; c < page.lines[l].text.size(); ++c) {
            lineOf.push_back(static_cast<int>(l));
            columnOf.push_back(static_cast<int>(c));
        }
        all += page.lines[l].text;
    }
    const std::wstring haystack = Folded(all, matchCase);
    const std::wstring needle = Folded(text, matchCase);
    std::vector<Match> matches;
    for (std::size_t at = haystack.find(needle); !needle.empty() && at != std::wstring::npos;
         at = haystack.find(needle, at + needle.size())) {
        Match match{static_cast<int>(at), static_cast<int>(needle.size()), {}};
        for (std::size_t i = at; i < at + needle.size(); ++i) {
            const int line = lineOf[i];
            const auto left = static_cast<float>(10 * columnOf[i]);
            const auto bottom = static_cast<float>(700 - 20 * line);
            if (!page.lines[static_cast<std::size_t>(line)].hasRects)
                continue;
            if (i == at || lineOf[i - 1] != line || match.rects.empty())
                match.rects.push_back(NdxRect{left, bottom, left + 10, bottom + 10});
            else
                match.rects.back().right = left + 10;
        }
        matches.push_back(std::move(match));
    }
    return matches;
}

// ---- Strings

void FakePdfHost::HostByteStringSet(HostByteString str, const char* text) {
    B(str) = text;
}
void FakePdfHost::HostByteStringAppendText(HostByteString str, const char* text) {
    B(str) += text;
}
int FakePdfHost::HostByteStringEquals(HostByteString a, HostByteString b) {
    return B(a) == B(b) ? 1 : 0;
}
// ASCII as it is, anything else as UTF-16BE after its byte order mark.
void FakePdfHost::HostTextToPdfString(const wchar_t* text, int length, int, HostByteString out) {
    const std::wstring wide(text, static_cast<std::size_t>(length));
    const bool ascii = std::all_of(wide.begin(), wide.end(), [](wchar_t c) { return c < 0x80; });
    std::string bytes;
    if (ascii) {
        bytes.assign(wide.begin(), wide.end());
    } else {
        bytes = "\xFE\xFF";
        for (wchar_t c : wide) {
            bytes.push_back(static_cast<char>((c >> 8) & 0xFF));
            bytes.push_back(static_cast<char>(c & 0xFF));
        }
    }
    B(out) = bytes;
}

// ---- Containers

HostMap FakePdfHost::HostMapNew(int) {
    return maps_.Add<HostMap>();
}
void FakePdfHost::HostMapDestroy(HostMap map) {
    maps_.Erase(map);
}
void FakePdfHost::HostMapSet(HostMap map, const void* key, void* value) {
    (*maps_.Find(map))[key] = value;
}
HostPtrArray FakePdfHost::HostPtrArrayNew() {
    return ptrArrays_.Add<HostPtrArray>();
}
void FakePdfHost::HostPtrArrayDestroy(HostPtrArray array) {
    ptrArrays_.Erase(array);
}
int FakePdfHost::HostPtrArrayGetCount(HostPtrArray array) {
    return static_cast<int>(ptrArrays_.Find(array)->size());
}
void* FakePdfHost::HostPtrArrayGetAt(HostPtrArray array, int index) {
    return ptrArrays_.Find(array)->at(static_cast<std::size_t>(index));
}
void FakePdfHost::HostPtrArrayAdd(HostPtrArray array, void* element) {
    ptrArrays_.Find(array)->push_back(element);
}
NdxRectArray FakePdfHost::NDXRectArrayNew() {
    return rectArrays_.Add<NdxRectArray>();
}
void FakePdfHost::NDXRectArrayDestroy(NdxRectArray array) {
    rectArrays_.Erase(array);
}
int FakePdfHost::NDXRectArrayGetCount(NdxRectArray array) {
    return static_cast<int>(rectArrays_.Find(array)->size());
}
NdxRect FakePdfHost::NDXRectArrayGetAt(NdxRectArray array, int index) {
    return rectArrays_.Find(array)->at(static_cast<std::size_t>(index));
}
void FakePdfHost::NDXRectArrayAdd(NdxRectArray array, float l, float b, float r, float t) {
    rectArrays_.Find(array)->push_back(NdxRect{l, b, r, t});
}
void FakePdfHost::NDXRectInflate(NdxRect* rect, float l, float b, float r, float t) {
    *rect = NdxRect{rect->left - l, rect->bottom - b, rect->right + r, rect->top + t};
}

// ---- Application

HostTool FakePdfHost::HostAppGetToolByName(const char* name) {
    return hasHandTool && std::string(name) == "Hand" ? H<HostTool>(&handTool_) : nullptr;
}
void FakePdfHost::HostAppSetCurrentTool(HostTool, int persistent) {
    calls.push_back("SetCurrentTool:" + std::to_string(persistent));
}
HostWindow FakePdfHost::HostAppGetMainWindow() {
    return H<HostWindow>(&mainWindow_);
}
int FakePdfHost::HostMessageBox(const wchar_t* text, int buttons, const wchar_t* title, int*,
                                HostWindow parent) {
    messageBoxes.emplace_back(title);
    messageBoxes.emplace_back(text);
    calls.push_back("MessageBox:" + std::to_string(buttons) + (parent != nullptr ? ":parent" : ""));
    if (messageBoxAnswers.empty())
        return 2;
    const int answer = messageBoxAnswers.front();
    messageBoxAnswers.pop_front();
    return answer;
}

// ---- Documents, views and selection

void FakePdfHost::HostDocSetChanged(HostDoc doc) {
    Doc(doc).modified = true;
    calls.push_back("SetChanged");
}
HostDocView FakePdfHost::HostDocGetView(HostDoc doc) {
    FakePdf* pdf = ModelOf(doc);
    return pdf != nullptr && pdf->hasView ? H<HostDocView>(pdf) : nullptr;
}
HostTextSelectTool FakePdfHost::HostDocGetTextSelectTool(HostDoc doc) {
    FakePdf* pdf = ModelOf(doc);
    return pdf != nullptr && pdf->hasTool ? H<HostTextSelectTool>(pdf) : nullptr;
}
void FakePdfHost::HostDocTouchPage(HostDoc, int pageIndex) {
    calls.push_back("TouchPage:" + std::to_string(pageIndex));
}
int FakePdfHost::HostDocIsAnnotAlive(HostDoc, HostAnnot annot) {
    return A(annot)->alive ? 1 : 0;
}
HostFormEnv FakePdfHost::HostDocGetInterForm(HostDoc doc) {
    FakePdf* pdf = ModelOf(doc);
    return pdf != nullptr && pdf->hasForm ? H<HostFormEnv>(pdf) : nullptr;
}
int FakePdfHost::HostDocReplaceText(HostDoc, int page, int ordinal, const wchar_t* text) {
    replacements.emplace_back(page, ordinal, text);
    return 1;
}
HostPageView FakePdfHost::HostDocGetPageView(HostDoc doc, int pageIndex) {
    FakePdf* pdf = ModelOf(doc);
    if (pdf == nullptr)
        return FakeHost::HostDocGetPageView(doc, pageIndex);
    if (pageIndex < 0 || pageIndex >= static_cast<int>(pdf->pages.size()))
        return nullptr;
    return H<HostPageView>(&pdf->pages[static_cast<std::size_t>(pageIndex)]);
}
void FakePdfHost::HostDocRefreshPageAnnots(HostDoc, int pageIndex, int flags) {
    calls.push_back("RefreshPageAnnots:" + std::to_string(pageIndex) + ":" + std::to_string(flags));
}
HostPageView FakePdfHost::HostDocViewGetPageView(HostDocView view, int pageIndex) {
    auto& pages = static_cast<FakePdf*>(static_cast<void*>(view))->pages;
    if (pageIndex < 0 || pageIndex >= static_cast<int>(pages.size()))
        return nullptr;
    return H<HostPageView>(&pages[static_cast<std::size_t>(pageIndex)]);
}
void FakePdfHost::HostDocViewGotoPage(HostDocView view, int pageIndex) {
    static_cast<FakePdf*>(static_cast<void*>(view))->currentPage = pageIndex;
    calls.push_back("GotoPage:" + std::to_string(pageIndex));
}
HostPageView FakePdfHost::HostDocViewGetCurrentPageView(HostDocView view) {
    return HostDocViewGetPageView(view,
                                  static_cast<FakePdf*>(static_cast<void*>(view))->currentPage);
}
void FakePdfHost::HostDocViewScrollTo(HostDocView, int x, int y) {
    scrolls.emplace_back(x, y);
}
void FakePdfHost::HostDocViewInvalidateRect(HostDocView, int l, int t, int r, int b) {
    repaints.push_back({l, t, r, b});
}
int FakePdfHost::HostPageViewCountAnnots(HostPageView page) {
    return static_cast<int>(PageOf(page)->annots.size());
}
// Device space: twice the page's numbers.
void FakePdfHost::HostPageViewPointToDevice(HostPageView, const NdxPoint* point, int* x, int* y) {
    *x = static_cast<int>(point->x * 2);
    *y = static_cast<int>(point->y * 2);
}
NdxRect FakePdfHost::HostPageViewGetVisibleRect(HostPageView page) {
    return PageOf(page)->visible;
}
HostAnnot FakePdfHost::HostPageViewGetAnnot(HostPageView page, int index) {
    auto& annots = PageOf(page)->annots;
    return index >= 0 && index < static_cast<int>(annots.size())
               ? H<HostAnnot>(annots[static_cast<std::size_t>(index)])
               : nullptr;
}
int FakePdfHost::HostPageViewDeleteAnnot(HostPageView page, HostAnnot annot) {
    calls.push_back("DeleteAnnot");
    auto& annots = PageOf(page)->annots;
    const auto found = std::find(annots.begin(), annots.end(), A(annot));
    if (refuseDelete || found == annots.end())
        return 0;
    annots.erase(found);
    A(annot)->alive = false;
    return 1;
}
void FakePdfHost::HostPageViewUpdateAnnot(HostPageView, HostAnnot) {
    calls.push_back("UpdateAnnot");
}
HostAnnot FakePdfHost::HostPageViewAddAnnot(HostPageView page, NdxObject dict, int index) {
    ownedDicts_.erase(dict);
    calls.push_back("AddAnnot:" + std::to_string(index));
    if (refuseAdd)
        return nullptr;
    FakeAnnot* annot = NewAnnot(Object(dict));
    PageOf(page)->annots.push_back(annot);
    return H<HostAnnot>(annot);
}
int FakePdfHost::HostPageViewOwnsAnnot(HostPageView page, HostAnnot annot) {
    const auto& annots = PageOf(page)->annots;
    return std::find(annots.begin(), annots.end(), A(annot)) != annots.end() ? 1 : 0;
}
NdxPage FakePdfHost::HostPageViewGetPage(HostPageView page) {
    FakePdfPage* fake = PageOf(page);
    return fake->available ? H<NdxPage>(fake) : nullptr;
}
void FakePdfHost::HostPageReloadAnnots(HostPageView page) {
    calls.push_back("ReloadAnnots:" + std::to_string(PageOf(page)->index));
}
void FakePdfHost::HostTextSelectToolClear(HostTextSelectTool) {
    selection.reset();
    calls.push_back("ClearSelection");
}
void FakePdfHost::HostTextSelectToolSelectRects(HostTextSelectTool, HostPageView page,
                                                NdxRectArray rects) {
    selection = FakeSelection{PageOf(page)->index, *rectArrays_.Find(rects), {}};
}
void FakePdfHost::HostTextSelectToolSelectRanges(HostTextSelectTool, HostMap ranges) {
    FakeSelection chosen;
    for (const auto& [key, value] : *maps_.Find(ranges)) {
        const auto* pair = static_cast<const int32_t*>(ptrArrays_.Find(value)->at(0));
        chosen.ranges[static_cast<int>(reinterpret_cast<intptr_t>(key))] = {pair[0], pair[1]};
    }
    selection = chosen;
}

// ---- PDF pages and objects

NdxObject FakePdfHost::NDXDocGetPage(NdxDoc doc, int pageIndex) {
    FakePdf* pdf = ModelOf(doc);
    if (pdf == nullptr || pageIndex < 0 || pageIndex >= static_cast<int>(pdf->pages.size()))
        return nullptr;
    return H<NdxObject>(pdf->pages[static_cast<std::size_t>(pageIndex)].dict);
}
NdxPage FakePdfHost::NDXPageNew() {
    return tempPages_.Add<NdxPage>();
}
void FakePdfHost::NDXPageDestroy(NdxPage page) {
    tempPages_.Erase(page);
}
int FakePdfHost::NDXPageIsParsed(NdxPage page) {
    if (const TempPage* temp = tempPages_.Find(page))
        return temp->parsed ? 1 : 0;
    return PageOf(page)->parsed ? 1 : 0;
}
void FakePdfHost::NDXPageLoad(NdxPage page, NdxDoc doc, NdxObject pageDict, int) {
    for (FakePdfPage& candidate : ModelOf(doc)->pages) {
        if (H<NdxObject>(candidate.dict) == pageDict)
            tempPages_.Find(page)->loaded = &candidate;
    }
}
void FakePdfHost::NDXPageParse(NdxPage page, NdxParseOptions) {
    if (TempPage* temp = tempPages_.Find(page))
        temp->parsed = temp->loaded != nullptr;
    else
        PageOf(page)->parsed = true;
}
NdxParseOptions FakePdfHost::NDXParseOptionsNew(int, int, int, int) {
    return parseOptions_.Add<NdxParseOptions>();
}
void FakePdfHost::NDXParseOptionsDestroy(NdxParseOptions options) {
    parseOptions_.Erase(options);
}
int FakePdfHost::NDXObjectGetType(NdxObject object) {
    const FakeObject* fake = Object(object);
    if (fake == nullptr)
        return kNdxObjectNull;
    switch (fake->kind) {
        case FakeObject::Kind::kNumber:
            return kNdxObjectNumber;
        case FakeObject::Kind::kString:
            return kNdxObjectString;
        case FakeObject::Kind::kName:
            return kNdxObjectName;
        case FakeObject::Kind::kArray:
            return kNdxObjectArray;
        case FakeObject::Kind::kDict:
            return kNdxObjectDictionary;
        case FakeObject::Kind::kRef:
            return kNdxObjectReference;
    }
    return kNdxObjectNull;
}
void FakePdfHost::NDXObjectDestroy(NdxObject object) {
    if (ownedDicts_.erase(object) == 0)
        calls.push_back("DestroyNotOwned");
}
NdxObject FakePdfHost::NDXObjectGetDirect(NdxObject object) {
    const FakeObject* fake = Object(object);
    return fake != nullptr && fake->kind == FakeObject::Kind::kRef ? H<NdxObject>(fake->target)
                                                                   : object;
}
void FakePdfHost::NDXStringGetBytes(NdxObject string, HostByteString out) {
    const FakeObject* fake = Object(string);
    B(out) = fake != nullptr ? fake->text : std::string();
}
NdxObject FakePdfHost::NDXArrayNew() {
    return H<NdxObject>(NewObject(FakeObject::Kind::kArray));
}
int FakePdfHost::NDXArrayCount(NdxObject array) {
    return static_cast<int>(Object(array)->items.size());
}
float FakePdfHost::NDXArrayGetNumber(NdxObject array, int index) {
    const auto& items = Object(array)->items;
    return index >= 0 && index < static_cast<int>(items.size())
               ? static_cast<float>(items[static_cast<std::size_t>(index)]->number)
               : 0.0f;
}
void FakePdfHost::NDXArrayAddNumber(NdxObject array, float value) {
    FakeObject* number = NewObject(FakeObject::Kind::kNumber);
    number->number = value;
    Object(array)->items.push_back(number);
}
NdxObject FakePdfHost::NDXDictNew() {
    FakeObject* dict = NewObject(FakeObject::Kind::kDict);
    dict->label = "annot";
    ownedDicts_.insert(dict);
    return H<NdxObject>(dict);
}
NdxObject FakePdfHost::NDXDictGet(NdxObject dict, const char* key) {
    const FakeObject* fake = Object(dict);
    return fake != nullptr ? H<NdxObject>(fake->Get(key)) : nullptr;
}
// Strings and names both read as their text; the information dictionary of FakeHost as there.
void FakePdfHost::NDXDictGetString(NdxObject dict, const char* key, HostByteString out) {
    const FakeObject* fake = Object(dict);
    if (fake == nullptr) {
        FakeHost::NDXDictGetString(dict, key, out);
        return;
    }
    const FakeObject* value = fake->Get(key);
    B(out) = value != nullptr && (value->kind == FakeObject::Kind::kString ||
                                  value->kind == FakeObject::Kind::kName)
                 ? value->text
                 : std::string();
}
void FakePdfHost::NDXDictSetObject(NdxObject dict, const char* key, NdxObject value, NdxDoc) {
    SetEntry(dict, key, Object(value));
}
void FakePdfHost::NDXDictSetName(NdxObject dict, const char* key, const char* name) {
    FakeObject* value = NewObject(FakeObject::Kind::kName);
    value->text = name;
    SetEntry(dict, key, value);
}
void FakePdfHost::NDXDictSetString(NdxObject dict, const char* key, HostByteString bytes) {
    FakeObject* value = NewObject(FakeObject::Kind::kString);
    value->text = B(bytes);
    SetEntry(dict, key, value);
}
void FakePdfHost::NDXDictSetInteger(NdxObject dict, const char* key, int number) {
    FakeObject* value = NewObject(FakeObject::Kind::kNumber);
    value->number = number;
    SetEntry(dict, key, value);
}
void FakePdfHost::NDXDictSetReference(NdxObject dict, const char* key, NdxDoc, NdxObject target) {
    FakeObject* value = NewObject(FakeObject::Kind::kRef);
    value->target = Object(target);
    SetEntry(dict, key, value);
}
void FakePdfHost::NDXDictSetRect(NdxObject dict, const char* key, NdxRect rect) {
    FakeObject* value = NewObject(FakeObject::Kind::kArray);
    for (float n : {rect.left, rect.bottom, rect.right, rect.top}) {
        value->items.push_back(NewObject(FakeObject::Kind::kNumber));
        value->items.back()->number = n;
    }
    SetEntry(dict, key, value);
}

// ---- Annotations and undo

// The annotation keeps a copy: the dictionary stays the caller's.
NdxAnnot FakePdfHost::NDXAnnotNew(NdxObject dict) {
    FakeObject* copy = NewObject(FakeObject::Kind::kDict);
    *copy = *Object(dict);
    return H<NdxAnnot>(NewAnnot(copy));
}
NdxObject FakePdfHost::NDXAnnotGetDict(NdxAnnot annot) {
    return H<NdxObject>(A(annot)->dict);
}
void FakePdfHost::NDXAnnotGetSubtype(NdxAnnot annot, HostByteString out) {
    const FakeObject* subtype = A(annot)->dict->Get("Subtype");
    B(out) = subtype != nullptr ? subtype->text : std::string();
}
NdxRect FakePdfHost::NDXAnnotGetRect(NdxAnnot annot) {
    const FakeObject* rect = A(annot)->dict->Get("Rect");
    if (rect == nullptr || rect->items.size() != 4)
        return NdxRect{0, 0, 0, 0};
    const auto n = [&](std::size_t i) { return static_cast<float>(rect->items[i]->number); };
    return NdxRect{n(0), n(1), n(2), n(3)};
}
NdxAnnotList FakePdfHost::NDXAnnotListGet(NdxPage page) {
    return H<NdxAnnotList>(PageOf(page));
}
NdxAnnot FakePdfHost::NDXAnnotListGetAt(NdxAnnotList list, int index) {
    return H<NdxAnnot>(PageOf(list)->annots.at(static_cast<std::size_t>(index)));
}
int FakePdfHost::NDXAnnotListCount(NdxAnnotList list) {
    return static_cast<int>(PageOf(list)->annots.size());
}
void FakePdfHost::NDXAnnotListInsert(NdxAnnotList list, int index, NdxAnnot annot) {
    auto& annots = PageOf(list)->annots;
    if (!listInsertIgnored)
        annots.insert(annots.begin() + index, A(annot));
}
NdxAnnot FakePdfHost::NDXHostAnnotGetPdfAnnot(HostAnnot annot) {
    return H<NdxAnnot>(annot);
}
HostUndoManager FakePdfHost::HostUndoGetManager() {
    return hasUndo ? H<HostUndoManager>(&undoManager_) : nullptr;
}
void FakePdfHost::HostUndoRecordAddAnnot(HostUndoManager, HostAnnot, int a, int b) {
    calls.push_back("UndoAdd:" + std::to_string(a) + ":" + std::to_string(b));
}
void FakePdfHost::HostUndoRecordDeleteAnnot(HostUndoManager, HostAnnot, int a) {
    calls.push_back("UndoDelete:" + std::to_string(a));
}

// ---- Forms: a control is its own field

NdxFormField FakePdfHost::NDXInterFormGetField(NdxInterForm form, int, const wchar_t* name) {
    for (FakePdfPage& page : static_cast<FakePdf*>(static_cast<void*>(form))->pages) {
        for (FakeControl& control : page.controls) {
            if (control.name == name)
                return H<NdxFormField>(&control);
        }
    }
    return nullptr;
}
int FakePdfHost::NDXInterFormCountPageControls(NdxInterForm, NdxPage page) {
    return static_cast<int>(PageOf(page)->controls.size());
}
NdxFormControl FakePdfHost::NDXInterFormGetPageControl(NdxInterForm, NdxPage page, int index) {
    return H<NdxFormControl>(&PageOf(page)->controls.at(static_cast<std::size_t>(index)));
}
void FakePdfHost::NDXInterFormSetUpdateAP(NdxInterForm, int update) {
    calls.push_back("SetUpdateAP:" + std::to_string(update));
}
void FakePdfHost::NDXFormFieldGetFullName(NdxFormField field, HostWideString out) {
    W(out) = C(field)->name;
}
void FakePdfHost::NDXFormFieldGetValue(NdxFormField field, HostWideString out) {
    W(out) = C(field)->value;
}
int FakePdfHost::NDXFormFieldSetValue(NdxFormField field, const wchar_t* value, int notify) {
    calls.push_back("SetValue:" + std::to_string(notify));
    if (refuseValue)
        return 0;
    C(field)->value = value;
    return 1;
}
int FakePdfHost::NDXFormControlGetType(NdxFormControl control) {
    return C(control)->type;
}
NdxFormField FakePdfHost::NDXFormControlGetField(NdxFormControl control) {
    return H<NdxFormField>(control);
}
void FakePdfHost::NDXFormControlGetRect(NdxFormControl control, NdxRect* out) {
    *out = C(control)->rect;
}
NdxInterForm FakePdfHost::NDXInterFormFromEnvironment(HostFormEnv env) {
    return static_cast<FakePdf*>(static_cast<void*>(env))->hasInterForm ? H<NdxInterForm>(env)
                                                                        : nullptr;
}

// ---- Text search

NdxTextPage FakePdfHost::NDXTextPageNew(NdxPage page, int) {
    return textPages_.Add<NdxTextPage>(TextPage{PageOf(page), false});
}
void FakePdfHost::NDXTextPageDestroy(NdxTextPage textPage) {
    textPages_.Erase(textPage);
}
void FakePdfHost::NDXTextPageParse(NdxTextPage textPage) {
    textPages_.Find(textPage)->parsed = true;
}
int FakePdfHost::NDXTextPageIsParsed(NdxTextPage textPage) {
    return textPages_.Find(textPage)->parsed ? 1 : 0;
}
NdxTextFind FakePdfHost::NDXTextFindNew(NdxTextPage textPage) {
    const TextPage* page = textPages_.Find(textPage);
    return page->parsed ? finders_.Add<NdxTextFind>(Finder{page->page, {}, -1}) : nullptr;
}
void FakePdfHost::NDXTextFindDestroy(NdxTextFind find) {
    finders_.Erase(find);
}
int FakePdfHost::NDXTextFindStart(NdxTextFind find, const wchar_t* text, uint32_t flags, int) {
    Finder* finder = finders_.Find(find);
    if (finder->page->startFails || *text == L'\0')
        return 0;
    finder->matches = FindIn(*finder->page, text, flags);
    finder->position = -1;
    return 1;
}
int FakePdfHost::NDXTextFindNext(NdxTextFind find) {
    Finder* finder = finders_.Find(find);
    return ++finder->position < static_cast<int>(finder->matches.size()) ? 1 : 0;
}
void FakePdfHost::NDXTextFindGetRects(NdxTextFind find, NdxRectArray rects) {
    const Finder* finder = finders_.Find(find);
    *rectArrays_.Find(rects) = finder->matches.at(static_cast<std::size_t>(finder->position)).rects;
}
int FakePdfHost::NDXTextFindGetCharIndex(NdxTextFind find) {
    const Finder* finder = finders_.Find(find);
    return finder->matches.at(static_cast<std::size_t>(finder->position)).start;
}
int FakePdfHost::NDXTextFindGetCharCount(NdxTextFind find) {
    const Finder* finder = finders_.Find(find);
    return finder->matches.at(static_cast<std::size_t>(finder->position)).count;
}
NdxFieldFind FakePdfHost::NDXFieldTextFindNew(NdxDoc, NdxPage page) {
    return fieldFinders_.Add<NdxFieldFind>(Finder{PageOf(page), {}, -1});
}
void FakePdfHost::NDXFieldTextFindDestroy(NdxFieldFind find) {
    fieldFinders_.Erase(find);
}
// One match per occurrence in the value of a text field, its rectangle the control's.
int FakePdfHost::NDXFieldTextFindStart(NdxFieldFind find, const wchar_t* text, uint32_t flags) {
    Finder* finder = fieldFinders_.Find(find);
    const bool matchCase = (flags & kNdxFindMatchCase) != 0;
    const std::wstring needle = Folded(text, matchCase);
    finder->matches.clear();
    for (const FakeControl& control : finder->page->controls) {
        const std::wstring value = Folded(control.value, matchCase);
        if (control.type != kNdxControlTextField || needle.empty())
            continue;
        for (auto at = value.find(needle); at != std::wstring::npos;
             at = value.find(needle, at + needle.size())) {
            finder->matches.push_back(Match{0, 0, {control.rect}});
        }
    }
    return 1;
}
int FakePdfHost::NDXFieldTextFindNext(NdxFieldFind find) {
    Finder* finder = fieldFinders_.Find(find);
    return ++finder->position < static_cast<int>(finder->matches.size()) ? 1 : 0;
}
void FakePdfHost::NDXFieldTextFindGetRects(NdxFieldFind find, NdxRectArray rects) {
    const Finder* finder = fieldFinders_.Find(find);
    *rectArrays_.Find(rects) = finder->matches.at(static_cast<std::size_t>(finder->position)).rects;
}

// ---- Redaction: applied Redact annotations leave their pages

void FakePdfHost::RemoveRedacts(FakePdf& pdf, const std::set<const void*>* only) {
    for (FakePdfPage& page : pdf.pages) {
        auto& annots = page.annots;
        for (auto it = annots.begin(); it != annots.end();) {
            const FakeObject* subtype = (*it)->dict->Get("Subtype");
            const bool redact = subtype != nullptr && subtype->text == "Redact";
            if (redact && (only == nullptr || only->count(*it) != 0)) {
                (*it)->alive = false;
                it = annots.erase(it);
            } else {
                ++it;
            }
        }
    }
}
int FakePdfHost::NDXRedactApplyAll(HostDoc doc, int flags) {
    calls.push_back("ApplyAll:" + std::to_string(flags));
    if (applyFails)
        return 0;
    RemoveRedacts(*ModelOf(doc), nullptr);
    return 1;
}
int FakePdfHost::NDXRedactApplyList(HostDoc doc, HostPtrArray annots, int flags) {
    const auto& listed = *ptrArrays_.Find(annots);
    calls.push_back("ApplyList:" + std::to_string(listed.size()) + ":" + std::to_string(flags));
    if (applyFails)
        return 0;
    const std::set<const void*> only(listed.begin(), listed.end());
    RemoveRedacts(*ModelOf(doc), &only);
    return 1;
}
int FakePdfHost::NDXRedactApplyBatch(HostDoc doc, int flags, uint32_t options) {
    calls.push_back("ApplyBatch:" + std::to_string(flags) + ":" + std::to_string(options));
    if (applyFails)
        return 0;
    RemoveRedacts(*ModelOf(doc), nullptr);
    return 1;
}
