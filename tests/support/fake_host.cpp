#include "fake_host.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cwctype>
#include <sstream>

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

}  // namespace

FakeHost::FakeHost() : userData(FreshFolder()) {}

FakeHost::~FakeHost() {
    std::error_code ignored;
    std::filesystem::remove_all(userData, ignored);
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

FakeObject* FakeHost::NewRect(const NdxRect& rect) {
    FakeObject* array = NewObject(FakeObject::Kind::kArray);
    for (float n : {rect.left, rect.bottom, rect.right, rect.top})
        array->items.push_back(NewObject(FakeObject::Kind::kNumber, n));
    return array;
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

void FakeHost::HostBase64Encode(HostBase64Encoder encoder, const void* data, int64_t size,
                                HostByteString out) {
    const char padding = static_cast<char>(*reinterpret_cast<int*>(encoder));
    B(out) =
        Base64(static_cast<const unsigned char*>(data), static_cast<std::size_t>(size), padding);
}

HostFunction FakeHost::HostExtensionGetFunction(HostExtTable table, int index) {
    const bool offered = table == reinterpret_cast<HostExtTable>(&ocrTable_) &&
                         ((index == 0 && ocrPageFunction) || (index == 2 && ocrDialogFunction));
    return offered ? &NoFunction : nullptr;
}

FakeRibbonNode* FakeRibbonNode::Child(const std::wstring& childName) const {
    for (const auto& child : children) {
        if (child->name == childName)
            return child.get();
    }
    return nullptr;
}

FakeRibbonNode& FakeHost::Make(HostFrame frame, std::initializer_list<std::wstring> path) {
    FakeRibbonNode* node = &Ribbon(frame);
    for (const std::wstring& name : path) {
        FakeRibbonNode* child = node->Child(name);
        node = child != nullptr ? child : AddChild(node, name.c_str(), L"");
    }
    return *node;
}

FakeRibbonNode* FakeHost::AddChild(const void* parent, const wchar_t* name, const wchar_t* title,
                                   int* added, int type, int position) {
    if (added != nullptr)
        ++*added;
    auto& children = Node(parent)->children;
    children.push_back(std::make_unique<FakeRibbonNode>(
        FakeRibbonNode{Text(name), Text(title), type, position, nullptr, nullptr, {}}));
    return children.back().get();
}
