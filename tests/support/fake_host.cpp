#include "fake_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cwctype>
#include <fstream>
#include <iterator>
#include <sstream>

#include "util/utf.h"

namespace {

std::filesystem::path FreshFolder() {
    static std::atomic<int> counter{0};
    std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) /
        ("fakehost-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
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

std::string Base64(const unsigned char* data, std::size_t size, char padding) {
    static constexpr char kAlphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < size; i += 3) {
        const std::size_t n = std::min<std::size_t>(3, size - i);
        uint32_t chunk = static_cast<uint32_t>(data[i]) << 16;
        if (n > 1)
            chunk |= static_cast<uint32_t>(data[i + 1]) << 8;
        if (n > 2)
            chunk |= data[i + 2];
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= n ? kAlphabet[(chunk >> (18 - 6 * k)) & 0x3F] : padding;
    }
    return out;
}

void NoFunction() {}

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

}  // namespace

FakeHost::FakeHost() : userData(FreshFolder()) {}

FakeHost::~FakeHost() {
    std::error_code ignored;
    std::filesystem::remove_all(userData, ignored);
}

template <typename Hook, typename... Args>
void FakeHost::FireDocHook(std::size_t word, Args... args) {
    const auto records = docEventRecords;
    for (HostDocEventRecord* record : records) {
        if (void* fn = record->word(word)) {
            reinterpret_cast<Hook>(fn)(record->word(kDocEventClientData), args...);
        }
    }
}

HostDoc FakeHost::Open(FakeDoc doc) {
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

void FakeHost::Close(HostDoc doc) {
    open_.erase(std::remove(open_.begin(), open_.end(), doc), open_.end());
    if (active == doc)
        active = open_.empty() ? nullptr : open_.back();
    FireDocHook<HostDocHook>(kDocEventClosing, doc);
}

void FakeHost::HostAppGetUserDataFolder(HostWideString out) {
    W(out) = FromUtf8(userData.string());
}
int FakeHost::LoginGetToken(HostExtTable, const wchar_t* baseAddress, const wchar_t*,
                            HostWideString token) {
    account.tokenRequests.emplace_back(baseAddress);
    const auto found = account.tokens.find(baseAddress);
    W(token) = found != account.tokens.end() ? found->second : std::wstring();
    return found != account.tokens.end() ? 1 : 0;
}
int FakeHost::LoginGetUserInfo(HostExtTable, const wchar_t*, HostWideString email,
                               HostWideString userId, HostWideString firstName,
                               HostWideString lastName) {
    if (!account.hasUser)
        return 0;
    W(email) = account.email;
    W(userId) = account.userId;
    W(firstName) = account.firstName;
    W(lastName) = account.lastName;
    return 1;
}
int FakeHost::LoginShowSignIn(HostExtTable, const wchar_t* text, int) {
    account.signInTexts.push_back(Text(text));
    if (account.signInAnswer != 0 && account.signInSignsIn)
        account.signedIn = true;
    return account.signInAnswer;
}
void FakeHost::HostAppReportUsage(HostWideString name, HostWideString unused1,
                                  HostWideString unused2, HostWideString type,
                                  HostWideString unused3, HostWideString unused4,
                                  HostWideString details, HostWideString module,
                                  HostWideString version, HostWideString extra1,
                                  HostWideString extra2, int last) {
    const bool gapsNull =
        unused1 == nullptr && unused2 == nullptr && unused3 == nullptr && unused4 == nullptr;
    usageReports.push_back(FakeUsageReport{W(name), W(type), W(details), W(module), W(version),
                                           W(extra1), W(extra2), gapsNull, last});
}

NdxPageObject FakeHost::NDXPageGetNextObject(NdxPage page, NdxPosition* position) {
    auto index = reinterpret_cast<std::uintptr_t>(*position) - 1;
    auto& objects = PdfPage(page).objects;
    if (index >= objects.size())
        return nullptr;
    *position = index + 1 < objects.size() ? reinterpret_cast<NdxPosition>(index + 2) : nullptr;
    return reinterpret_cast<NdxPageObject>(&objects[index]);
}

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

void FakeHost::UserDeletes(HostDoc doc, int page, std::size_t position) {
    auto& annots = Page(doc, page).annots;
    annots.at(position)->alive = false;
    annots.erase(annots.begin() + static_cast<std::ptrdiff_t>(position));
}

void FakeHost::UserRedacts(HostDoc doc, int page, const std::string& uniqueName) {
    FakeObject* dict = NewObject(FakeObject::Kind::kDict);
    SetNew(H<NdxObject>(dict), "Subtype", FakeObject::Kind::kName)->text = "Redact";
    if (!uniqueName.empty())
        SetNew(H<NdxObject>(dict), "NM", FakeObject::Kind::kString)->text = uniqueName;
    Page(doc, page).annots.push_back(NewAnnot(dict));
}

int FakeHost::LiveHandles() const {
    return static_cast<int>(ownedDicts_.size() + rectArrays_.items.size() +
                            ptrArrays_.items.size() + maps_.items.size() +
                            parseOptions_.items.size() + textPages_.items.size() +
                            finders_.items.size() + tempPages_.items.size());
}

FakeObject* FakeHost::NewObject(FakeObject::Kind kind) {
    objects_.push_back(std::make_unique<FakeObject>());
    objects_.back()->kind = kind;
    objectSet_.insert(objects_.back().get());
    return objects_.back().get();
}

FakeObject* FakeHost::Object(NdxObject handle) const {
    const auto* object = reinterpret_cast<const FakeObject*>(handle);
    return objectSet_.count(object) != 0 ? const_cast<FakeObject*>(object) : nullptr;
}

FakeObject* FakeHost::NewRect(const NdxRect& rect) {
    FakeObject* array = NewObject(FakeObject::Kind::kArray);
    for (float n : {rect.left, rect.bottom, rect.right, rect.top}) {
        array->items.push_back(NewObject(FakeObject::Kind::kNumber));
        array->items.back()->number = n;
    }
    return array;
}

FakeObject* FakeHost::SetNew(NdxObject dict, const char* key, FakeObject::Kind kind) {
    FakeObject* value = NewObject(kind);
    SetEntry(dict, key, value);
    return value;
}

void FakeHost::SetEntry(NdxObject dict, const char* key, FakeObject* value) {
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

FakePage* FakeHost::PageOf(const void* page) {
    if (const TempPage* temp = tempPages_.Find(page))
        return temp->loaded;
    return static_cast<FakePage*>(const_cast<void*>(page));
}

FakeAnnot* FakeHost::NewAnnot(FakeObject* dict) {
    annots_.push_back(std::make_unique<FakeAnnot>());
    annots_.back()->dict = dict;
    return annots_.back().get();
}

std::vector<FakeHost::Match> FakeHost::FindIn(const FakePage& page, const std::wstring& text,
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

// ASCII as it is, anything else as UTF-16BE after its byte order mark.
void FakeHost::HostTextToPdfString(const wchar_t* text, int length, int, HostByteString out) {
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

// ---- Application

int FakeHost::HostMessageBox(const wchar_t* text, int buttons, const wchar_t* title, int*,
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

HostPageView FakeHost::HostDocGetPageView(HostDoc doc, int pageIndex) {
    FakeDoc* pdf = &Doc(doc);
    if (pageIndex < 0 || pageIndex >= static_cast<int>(pdf->pages.size()))
        return nullptr;
    return H<HostPageView>(&pdf->pages[static_cast<std::size_t>(pageIndex)]);
}
HostAnnot FakeHost::HostPageViewGetAnnot(HostPageView page, int index) {
    auto& annots = PageOf(page)->annots;
    return index >= 0 && index < static_cast<int>(annots.size())
               ? H<HostAnnot>(annots[static_cast<std::size_t>(index)])
               : nullptr;
}
int FakeHost::HostPageViewDeleteAnnot(HostPageView page, HostAnnot annot) {
    calls.push_back("DeleteAnnot");
    auto& annots = PageOf(page)->annots;
    const auto found = std::find(annots.begin(), annots.end(), A(annot));
    if (found == annots.end())
        return 0;
    annots.erase(found);
    A(annot)->alive = false;
    return 1;
}
HostAnnot FakeHost::HostPageViewAddAnnot(HostPageView page, NdxObject dict, int index) {
    ownedDicts_.erase(dict);
    calls.push_back("AddAnnot:" + std::to_string(index));
    if (refuseAdd)
        return nullptr;
    FakeAnnot* annot = NewAnnot(Object(dict));
    PageOf(page)->annots.push_back(annot);
    return H<HostAnnot>(annot);
}
void FakeHost::HostTextSelectToolSelectRanges(HostTextSelectTool, HostMap ranges) {
    FakeSelection chosen;
    for (const auto& [key, value] : *maps_.Find(ranges)) {
        const auto* pair = static_cast<const int32_t*>(ptrArrays_.Find(value)->at(0));
        chosen.ranges[static_cast<int>(reinterpret_cast<intptr_t>(key))] = {pair[0], pair[1]};
    }
    selection = chosen;
}

// ---- PDF pages and objects

NdxObject FakeHost::NDXDocGetPage(NdxDoc doc, int pageIndex) {
    FakeDoc* pdf = H<FakeDoc*>(doc);
    if (pdf == nullptr || pageIndex < 0 || pageIndex >= static_cast<int>(pdf->pages.size()))
        return nullptr;
    return H<NdxObject>(pdf->pages[static_cast<std::size_t>(pageIndex)].dict);
}
int FakeHost::NDXPageIsParsed(NdxPage page) {
    if (const TempPage* temp = tempPages_.Find(page))
        return temp->parsed ? 1 : 0;
    return PageOf(page)->parsed ? 1 : 0;
}
void FakeHost::NDXPageLoad(NdxPage page, NdxDoc doc, NdxObject pageDict, int) {
    for (FakePage& candidate : H<FakeDoc*>(doc)->pages) {
        if (H<NdxObject>(candidate.dict) == pageDict)
            tempPages_.Find(page)->loaded = &candidate;
    }
}
void FakeHost::NDXPageParse(NdxPage page, NdxParseOptions) {
    if (TempPage* temp = tempPages_.Find(page))
        temp->parsed = temp->loaded != nullptr;
    else
        PageOf(page)->parsed = true;
}
int FakeHost::NDXObjectGetType(NdxObject object) {
    const FakeObject* fake = Object(object);
    // By FakeObject::Kind, in its order.
    static constexpr int kTypes[] = {kNdxObjectNumber, kNdxObjectString,     kNdxObjectName,
                                     kNdxObjectArray,  kNdxObjectDictionary, kNdxObjectReference};
    return fake != nullptr ? kTypes[static_cast<int>(fake->kind)] : kNdxObjectNull;
}
void FakeHost::NDXObjectDestroy(NdxObject object) {
    if (ownedDicts_.erase(object) == 0)
        calls.push_back("DestroyNotOwned");
}
NdxObject FakeHost::NDXObjectGetDirect(NdxObject object) {
    const FakeObject* fake = Object(object);
    return fake != nullptr && fake->kind == FakeObject::Kind::kRef ? H<NdxObject>(fake->target)
                                                                   : object;
}
float FakeHost::NDXArrayGetNumber(NdxObject array, int index) {
    const auto& items = Object(array)->items;
    return index >= 0 && index < static_cast<int>(items.size())
               ? static_cast<float>(items[static_cast<std::size_t>(index)]->number)
               : 0.0f;
}
void FakeHost::NDXArrayAddNumber(NdxObject array, float value) {
    FakeObject* number = NewObject(FakeObject::Kind::kNumber);
    number->number = value;
    Object(array)->items.push_back(number);
}
NdxObject FakeHost::NDXDictNew() {
    FakeObject* dict = NewObject(FakeObject::Kind::kDict);
    dict->label = "annot";
    ownedDicts_.insert(dict);
    return H<NdxObject>(dict);
}
// Strings and names both read as their text; a document's information dictionary is a plain map.
void FakeHost::NDXDictGetString(NdxObject dict, const char* key, HostByteString out) {
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

// ---- Annotations and undo

// The annotation keeps a copy: the dictionary stays the caller's.
NdxAnnot FakeHost::NDXAnnotNew(NdxObject dict) {
    FakeObject* copy = NewObject(FakeObject::Kind::kDict);
    *copy = *Object(dict);
    return H<NdxAnnot>(NewAnnot(copy));
}
NdxRect FakeHost::NDXAnnotGetRect(NdxAnnot annot) {
    const FakeObject* rect = A(annot)->dict->Get("Rect");
    if (rect == nullptr || rect->items.size() != 4)
        return NdxRect{0, 0, 0, 0};
    const auto n = [&](std::size_t i) { return static_cast<float>(rect->items[i]->number); };
    return NdxRect{n(0), n(1), n(2), n(3)};
}
void FakeHost::NDXAnnotListInsert(NdxAnnotList list, int index, NdxAnnot annot) {
    auto& annots = PageOf(list)->annots;
    if (!listInsertIgnored)
        annots.insert(annots.begin() + index, A(annot));
}

// ---- Forms: a control is its own field

NdxFormField FakeHost::NDXInterFormGetField(NdxInterForm form, int, const wchar_t* name) {
    for (FakePage& page : static_cast<FakeDoc*>(static_cast<void*>(form))->pages) {
        for (FakeControl& control : page.controls) {
            if (control.name == name)
                return H<NdxFormField>(&control);
        }
    }
    return nullptr;
}
int FakeHost::NDXFormFieldSetValue(NdxFormField field, const wchar_t* value, int notify) {
    calls.push_back("SetValue:" + std::to_string(notify));
    if (refuseValue)
        return 0;
    C(field)->value = value;
    return 1;
}

// ---- Text search

int FakeHost::NDXTextFindStart(NdxTextFind find, const wchar_t* text, uint32_t flags, int) {
    Finder* finder = finders_.Find(find);
    if (finder->page->startFails || *text == L'\0')
        return 0;
    finder->matches = FindIn(*finder->page, text, flags);
    finder->position = -1;
    return 1;
}
// One match per occurrence in the value of a text field, its rectangle the control's; then one
// per occurrence in the /Contents of a free text annotation, with the rectangle {9, 9, 9, 9}.
int FakeHost::NDXFieldTextFindStart(NdxFieldFind find, const wchar_t* text, uint32_t flags) {
    Finder* finder = finders_.Find(find);
    finder->position = -1;
    const bool matchCase = (flags & kNdxFindMatchCase) != 0;
    const std::wstring needle = Folded(text, matchCase);
    finder->matches.clear();
    auto findIn = [&](const std::wstring& value, NdxRect rect) {
        for (auto at = value.find(needle); at != std::wstring::npos;
             at = value.find(needle, at + needle.size())) {
            finder->matches.push_back(Match{0, 0, {rect}});
        }
    };
    for (const FakeControl& control : finder->page->controls) {
        if (control.type == kNdxControlTextField && !needle.empty())
            findIn(Folded(control.value, matchCase), control.rect);
    }
    for (const FakeAnnot* annot : finder->page->annots) {
        const FakeObject* subtype = annot->dict->Get("Subtype");
        const FakeObject* contents = annot->dict->Get("Contents");
        if (subtype != nullptr && subtype->text == "FreeText" && contents != nullptr &&
            !needle.empty()) {
            findIn(Folded(std::wstring(contents->text.begin(), contents->text.end()), matchCase),
                   NdxRect{9, 9, 9, 9});
        }
    }
    return 1;
}

// ---- Redaction: applied Redact annotations leave their pages

void FakeHost::RemoveRedacts(FakeDoc& pdf, const std::set<const void*>* only) {
    for (FakePage& page : pdf.pages) {
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
int FakeHost::ApplyRedacts(HostDoc doc, std::string call, const std::set<const void*>* only) {
    calls.push_back(std::move(call));
    if (applyFails)
        return 0;
    RemoveRedacts(Doc(doc), only);
    return 1;
}
int FakeHost::NDXRedactApplyList(HostDoc doc, HostPtrArray annots, int flags) {
    const auto& listed = *ptrArrays_.Find(annots);
    const std::set<const void*> only(listed.begin(), listed.end());
    return ApplyRedacts(
        doc, "ApplyList:" + std::to_string(listed.size()) + ":" + std::to_string(flags), &only);
}

FakeProgress* FakeHost::Bar() {
    for (auto& window : progressWindows) {
        if (!window->destroyed)
            return window.get();
    }
    return nullptr;
}

void FakeHost::FireDidSave(HostDoc doc, int result) {
    FireDocHook<HostDocSaveHook>(kDocEventDidSave, doc, result);
}

// ---- Progress window

HostProgress FakeHost::HostProgressNew(HostWindow, int flag) {
    if (refuseProgress)
        return nullptr;
    progressWindows.push_back(std::make_unique<FakeProgress>());
    progressWindows.back()->flag = flag;
    return reinterpret_cast<HostProgress>(progressWindows.back().get());
}

// ---- Base64 and string arrays

HostBase64Encoder FakeHost::HostBase64EncoderNew(int paddingChar) {
    ++liveEncoders;
    encoderPadding_ = paddingChar;
    return reinterpret_cast<HostBase64Encoder>(&encoderPadding_);
}
void FakeHost::HostBase64Encode(HostBase64Encoder encoder, const void* data, int64_t size,
                                HostByteString out) {
    const char padding = static_cast<char>(*reinterpret_cast<int*>(encoder));
    B(out) =
        Base64(static_cast<const unsigned char*>(data), static_cast<std::size_t>(size), padding);
}

// ---- Documents

int FakeHost::HostDocSave(HostDoc doc, int, int, int, int) {
    if (refuseSave)
        return 0;
    Doc(doc).modified = false;
    return 1;
}
int FakeHost::HostDocSaveAs(HostDoc doc, const wchar_t* path, int, int,
                            const HostSaveAsOptions* options) {
    savedAs.emplace_back(path);
    saveAsOptions.push_back(*options);
    if (refuseSaveAs)
        return 0;
    Doc(doc).path = path;
    Doc(doc).modified = false;
    return 1;
}
void FakeHost::HostDocGetFileName(HostDoc doc, HostWideString out) {
    W(out) = std::filesystem::path(ToUtf8(Doc(doc).path)).filename().wstring();
}
// A hidden document is not activated, and its model is the one `disk` holds for the file's bytes.
HostDoc FakeHost::HostDocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions*) {
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
void FakeHost::NDXPageGetTextLines(HostStringArray out, NdxDoc doc, NdxObject pageDict, int a,
                                   int b) {
    textLineArgs.emplace_back(a, b);
    for (FakePage& page : H<FakeDoc*>(doc)->pages) {
        if (reinterpret_cast<NdxObject>(page.dict) != pageDict)
            continue;
        for (const FakeLine& line : page.lines)
            stringArrays_.Find(out)->push_back(line.text);
    }
}
// Flattening turns every filled text field into a line of its page.
void FakeHost::NDXFlattenerAddPage(NdxFlattener, NdxPage page, int a, int b) {
    FakePage& flat = PdfPage(page);
    flattenerCalls.push_back("page" + std::to_string(flat.index) + ":" + std::to_string(a) + "," +
                             std::to_string(b));
    for (const FakeControl& control : flat.controls) {
        if (control.type == kNdxControlTextField && !control.value.empty())
            flat.lines.push_back(FakeLine{control.value});
    }
    flat.controls.clear();
}

// ---- OCR extension

HostExtTable FakeHost::HostExtensionFind(const char* name, int version) {
    if (ocrTable && std::string(name) == "OCRRecognition extension HFT" && version == 1)
        return reinterpret_cast<HostExtTable>(&ocrTable_);
    if (loginTable && std::string(name) == "login" && version == 103)
        return reinterpret_cast<HostExtTable>(this);
    return nullptr;
}
HostFunction FakeHost::HostExtensionGetFunction(HostExtTable table, int index) {
    const bool offered = table == reinterpret_cast<HostExtTable>(&ocrTable_) &&
                         ((index == 0 && ocrPageFunction) || (index == 2 && ocrDialogFunction));
    return offered ? &NoFunction : nullptr;
}
int FakeHost::OcrRecognizePage(HostExtTable, NdxPage page, HostOcrOptions* options, int) {
    recognisedPages.push_back(PdfPage(page).index);
    ocrLanguage = options->language;
    return 1;
}
int FakeHost::OcrShowDialog(HostExtTable, HostWindow, HostOcrOptions*,
                            HostOcrDialogCallback* callback) {
    ++ocrDialogs;
    if (ocrDialogConfirms)
        callback->confirmed(callback->client, L"German", 0);
    return 1;
}

FakeRibbonNode* FakeRibbonNode::Child(const std::wstring& childName) const {
    for (const auto& child : children) {
        if (child->name == childName)
            return child.get();
    }
    return nullptr;
}

FakeRibbonNode& FakeHost::Ribbon(HostFrame frame) {
    auto& bar = ribbons[frame];
    if (!bar)
        bar = std::make_unique<FakeRibbonNode>();
    return *bar;
}

FakeRibbonNode* FakeHost::Find(HostFrame frame, std::initializer_list<std::wstring> path) {
    const auto bar = ribbons.find(frame);
    FakeRibbonNode* node = bar != ribbons.end() ? bar->second.get() : nullptr;
    for (const std::wstring& name : path) {
        if (node == nullptr)
            return nullptr;
        node = node->Child(name);
    }
    return node;
}

FakeRibbonNode& FakeHost::Make(HostFrame frame, std::initializer_list<std::wstring> path) {
    FakeRibbonNode* node = &Ribbon(frame);
    for (const std::wstring& name : path) {
        FakeRibbonNode* child = node->Child(name);
        node = child != nullptr ? child : AddChild(node, name.c_str(), L"");
    }
    return *node;
}

HostRibbonBar FakeHost::HostRibbonGetBar(HostFrame frame) {
    return noRibbon ? nullptr : HandleOf<HostRibbonBar>(&Ribbon(frame));
}

HostRibbonCategory FakeHost::HostRibbonAddCategory(HostRibbonBar bar, const wchar_t* name,
                                                   const wchar_t* title) {
    ++categoriesAdded;
    return HandleOf<HostRibbonCategory>(AddChild(bar, name, title));
}

HostRibbonCategory FakeHost::HostRibbonFindCategory(HostRibbonBar bar, const wchar_t* name) {
    return HandleOf<HostRibbonCategory>(Node(bar)->Child(Text(name)));
}

HostRibbonPanel FakeHost::HostRibbonAddPanel(HostRibbonCategory category, const wchar_t* name,
                                             const wchar_t* title, int) {
    ++panelsAdded;
    return HandleOf<HostRibbonPanel>(AddChild(category, name, title));
}

HostRibbonPanel FakeHost::HostRibbonFindPanel(HostRibbonCategory category, const wchar_t* name) {
    return HandleOf<HostRibbonPanel>(Node(category)->Child(Text(name)));
}

HostRibbonElement FakeHost::HostRibbonAddElement(HostRibbonPanel panel, int type,
                                                 const wchar_t* name, const wchar_t* title, int) {
    ++elementsAdded;
    FakeRibbonNode* element = AddChild(panel, name, title);
    element->type = type;
    return HandleOf<HostRibbonElement>(element);
}

HostRibbonElement FakeHost::HostRibbonFindElement(HostRibbonPanel panel, const wchar_t* name) {
    return HandleOf<HostRibbonElement>(Node(panel)->Child(Text(name)));
}

HostRibbonItem FakeHost::HostRibbonAddSubItem(HostRibbonElement element, int, const wchar_t* name,
                                              const wchar_t* title, int position, int, int, int) {
    FakeRibbonNode* entry = AddChild(element, name, title);
    entry->position = position;
    return HandleOf<HostRibbonItem>(entry);
}

void FakeHost::HostRibbonSetExecuteProc(HostRibbonItem item, HostRibbonExecuteProc proc) {
    Node(item)->execute = proc;
}

void FakeHost::HostRibbonSetEnableProc(HostRibbonItem item, HostRibbonEnableProc proc) {
    Node(item)->enable = proc;
}

void FakeHost::HostBubbleShow(HostBubbleSource, uint32_t pluginId, int, const wchar_t* text,
                              int milliseconds, int kind, int) {
    bubbles.push_back({Text(text), pluginId, milliseconds, kind});
}

void FakeHost::NotifyBubbles(int ready) {
    const auto records = bubbleRecords;
    for (const auto& [source, record] : records) {
        const auto notify = reinterpret_cast<HostBubbleNotifyFn>(record->word(kBubbleNotify));
        notify(record->word(kBubbleClientData), ready);
    }
}

void FakeHost::HostAppShowPane(const char* paneName, int show) {
    paneCalls.emplace_back(paneName, show);
    for (const auto& [window, record] : paneRecords) {
        if (window != mainWindow)
            continue;
        const auto name = reinterpret_cast<HostPaneNameFn>(record->word(kPaneGetName));
        if (std::string(name(record->word(kPaneClientData))) != paneName)
            continue;
        bool& shown = paneShown[record];
        if (show != 0) {
            const auto create = reinterpret_cast<HostPaneCreateFn>(record->word(kPaneCreateWindow));
            create(record->word(kPaneClientData), paneParent);
        } else if (shown) {
            const auto closed = reinterpret_cast<HostPaneClosedFn>(record->word(kPaneClosed));
            closed(record->word(kPaneClientData));
        }
        shown = show != 0;
        return;
    }
}
