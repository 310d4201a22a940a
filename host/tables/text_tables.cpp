// Text search: text pages (the numbered characters of a page, see engine/text_page.h), text
// finders over them, field finders over the values of a page's text fields and the text drawn by
// its other annotations (free text, stamps), and the replacement of a match found by the last
// search of a page (a match in an annotation's appearance is not replaced).
//
// Finders: Start compiles the needle (flags: kNdxFindMatchCase, kNdxFindWholeWord; other bits
// are ignored; the matching rules are those of engine/text_finder.h), finds every match from
// the start index on and answers nonzero, also when nothing matches; it answers zero only when
// there is nothing to search for (a null, empty or whitespace-only needle) or no open document.
// Next moves to the following match. GetRects replaces the contents of the caller's array with
// the rectangles of the current match, one per line, in PDF page space; before the first match
// and after the last it empties the array, and the character index and count are 0.
#include <algorithm>

#include "engine/annotation_text_finder.h"
#include "engine/field_text_finder.h"
#include "engine/form_fields.h"
#include "form_edits.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

static_assert(sizeof(wchar_t) == sizeof(char32_t), "wide texts are UTF-32 on this platform");

std::u32string Utf32Of(const wchar_t* text) {
    std::u32string converted;
    for (const wchar_t* at = text; at != nullptr && *at != L'\0'; ++at)
        converted += static_cast<char32_t>(*at);
    return converted;
}

engine::FindOptions OptionsOf(uint32_t flags) {
    return engine::FindOptions{.matchCase = (flags & kNdxFindMatchCase) != 0,
                               .wholeWord = (flags & kNdxFindWholeWord) != 0};
}

bool SameText(const std::u32string& converted, const wchar_t* text) {
    std::size_t i = 0;
    for (; text != nullptr && text[i] != L'\0'; ++i) {
        if (i >= converted.size() || converted[i] != static_cast<char32_t>(text[i]))
            return false;
    }
    return i == converted.size();
}

// The needle of a search being started: the last one again when text and flags are the same.
const SearchNeedle& NeedleOf(HostApp& app, const wchar_t* text, uint32_t flags) {
    SearchNeedle& last = app.Texts().lastNeedle;
    if (last.flags != flags || !SameText(*last.text, text)) {
        last.text = std::make_shared<const std::u32string>(Utf32Of(text));
        last.flags = flags;
        last.pattern = engine::TextPattern::Compile(*last.text, OptionsOf(flags));
    }
    return last;
}

// The open document and page index a PDF page handle stands for.
struct PageRef {
    HostDocument* document = nullptr;
    int page = -1;
};

PageRef PageOf(HostApp& app, NdxPage page) {
    const PdfPageRecord* record = app.Pages().FindPage(page);
    if (record == nullptr || record->document == nullptr)
        return {};
    HostDocument* document = FindDocument(app, record->document);
    if (document == nullptr || record->index < 0 ||
        record->index >= document->Engine().PageCount()) {
        return {};
    }
    return {document, record->index};
}

void FillRects(HostApp& app, NdxRectArray array, const std::vector<engine::Rect>& rects) {
    RectArrayValue* value = app.Values().rectArrays.Find(array);
    if (value == nullptr)
        return;
    value->items.clear();
    for (const engine::Rect& rect : rects)
        value->items.push_back(NdxRect{rect.left, rect.bottom, rect.right, rect.top});
}

template <typename Record>
bool HasCurrent(const Record& record) {
    return record.current >= 0 && static_cast<std::size_t>(record.current) < record.matches.size();
}

// Moves a finder to its next match: 1 while there is one, 0 after the last or for a finder
// whose document has closed.
template <typename Record>
int StepToNextMatch(HostApp& app, Record* record) {
    if (record == nullptr || FindDocument(app, record->document) == nullptr)
        return 0;
    record->current = std::min(record->current + 1, static_cast<int>(record->matches.size()));
    return HasCurrent(*record) ? 1 : 0;
}

// ---- Text pages

NdxTextPage TextPageNew(NdxPage page, int) {
    return Guarded<NdxTextPage>(nullptr, [&](HostApp& app) -> NdxTextPage {
        const PageRef ref = PageOf(app, page);
        if (ref.document == nullptr)
            return nullptr;
        return app.Texts().pages.Emplace(TextPageRecord{ref.document->Handle(), ref.page, {}});
    });
}

void TextPageDestroy(NdxTextPage textPage) {
    Guarded([&](HostApp& app) { app.Texts().pages.Erase(textPage); });
}

// Takes the page's text from its document's cache (built there if the page changed).
bool Parse(HostApp& app, TextPageRecord& record) {
    HostDocument* document = FindDocument(app, record.document);
    if (document == nullptr)
        return false;
    record.text = document->TextCache().Get(document->Engine(), record.page);
    return true;
}

void TextPageParse(NdxTextPage textPage) {
    Guarded([&](HostApp& app) {
        if (TextPageRecord* record = app.Texts().pages.Find(textPage))
            Parse(app, *record);
    });
}

int TextPageIsParsed(NdxTextPage textPage) {
    return Guarded(0, [&](HostApp& app) {
        const TextPageRecord* record = app.Texts().pages.Find(textPage);
        return record != nullptr && record->text != nullptr ? 1 : 0;
    });
}

// ---- Text finders

// A finder searches the text its text page holds; an unparsed text page is parsed first.
NdxTextFind TextFindNew(NdxTextPage textPage) {
    return Guarded<NdxTextFind>(nullptr, [&](HostApp& app) -> NdxTextFind {
        TextPageRecord* page = app.Texts().pages.Find(textPage);
        if (page == nullptr || (page->text == nullptr && !Parse(app, *page)))
            return nullptr;
        return app.Texts().finders.Emplace(TextFindRecord{
            page->document, page->page, page->text, {}, -1, nullptr, engine::Folding::kCaseless});
    });
}

void TextFindDestroy(NdxTextFind find) {
    Guarded([&](HostApp& app) { app.Texts().finders.Erase(find); });
}

int TextFindStart(NdxTextFind find, const wchar_t* text, uint32_t flags, int startIndex) {
    return Guarded(0, [&](HostApp& app) {
        TextFindRecord* record = app.Texts().finders.Find(find);
        HostDocument* document = record != nullptr ? FindDocument(app, record->document) : nullptr;
        const SearchNeedle& needle = NeedleOf(app, text, flags);
        if (document == nullptr || !needle.pattern)
            return 0;
        const engine::Folding folding = needle.pattern->ReadingFolding();
        if (!record->reading || record->readingFolding != folding) {
            record->reading = std::make_shared<const engine::ReadingText>(
                engine::ReadingText::Of(*record->text, folding));
            record->readingFolding = folding;
        }
        record->matches = needle.pattern->FindAll(*record->reading, *record->text, startIndex);
        record->current = -1;
        std::vector<engine::MatchPlacement> placements;
        placements.reserve(record->matches.size());
        for (const engine::TextMatch& match : record->matches) {
            placements.push_back(engine::PlacementOf(*record->text, match));
            document->Terms().Record(record->page, *needle.text, placements.back().bands);
        }
        document->Searches().RecordText(record->page, needle.text, flags, std::move(placements));
        return 1;
    });
}

int TextFindNext(NdxTextFind find) {
    return Guarded(
        0, [&](HostApp& app) { return StepToNextMatch(app, app.Texts().finders.Find(find)); });
}

void TextFindGetRects(NdxTextFind find, NdxRectArray rects) {
    Guarded([&](HostApp& app) {
        const TextFindRecord* record = app.Texts().finders.Find(find);
        if (record == nullptr || !HasCurrent(*record)) {
            FillRects(app, rects, {});
            return;
        }
        const engine::TextMatch& match = record->matches[static_cast<std::size_t>(record->current)];
        FillRects(app, rects, record->text->LineBoxes(match.first, match.count));
    });
}

int TextFindGetCharIndex(NdxTextFind find) {
    return Guarded(0, [&](HostApp& app) {
        const TextFindRecord* record = app.Texts().finders.Find(find);
        return record != nullptr && HasCurrent(*record)
                   ? record->matches[static_cast<std::size_t>(record->current)].first
                   : 0;
    });
}

int TextFindGetCharCount(NdxTextFind find) {
    return Guarded(0, [&](HostApp& app) {
        const TextFindRecord* record = app.Texts().finders.Find(find);
        return record != nullptr && HasCurrent(*record)
                   ? record->matches[static_cast<std::size_t>(record->current)].count
                   : 0;
    });
}

// ---- Field finders

NdxFieldFind FieldTextFindNew(NdxDoc doc, NdxPage page) {
    return Guarded<NdxFieldFind>(nullptr, [&](HostApp& app) -> NdxFieldFind {
        const PageRef ref = PageOf(app, page);
        if (ref.document == nullptr || ref.document->PdfHandle() != doc)
            return nullptr;
        return app.Texts().fieldFinders.Emplace(
            FieldFindRecord{ref.document->Handle(), ref.page, {}, -1});
    });
}

void FieldTextFindDestroy(NdxFieldFind find) {
    Guarded([&](HostApp& app) { app.Texts().fieldFinders.Erase(find); });
}

int FieldTextFindStart(NdxFieldFind find, const wchar_t* text, uint32_t flags) {
    return Guarded(0, [&](HostApp& app) {
        FieldFindRecord* record = app.Texts().fieldFinders.Find(find);
        HostDocument* document = record != nullptr ? FindDocument(app, record->document) : nullptr;
        const SearchNeedle& needle = NeedleOf(app, text, flags);
        if (document == nullptr || !needle.pattern)
            return 0;
        std::vector<engine::FieldMatch> found =
            engine::FindInFieldValues(document->Engine(), record->page, *needle.pattern);
        record->matches.clear();
        record->current = -1;
        std::vector<FieldHit> hits;
        for (engine::FieldMatch& match : found) {
            document->Terms().Record(record->page, *needle.text, match.rects);
            record->matches.push_back(std::move(match.rects));
            // A match outside the value (a list's option) names no field: it cannot be replaced.
            const NdxFormField field =
                match.value.empty() ? nullptr : FieldHandle(*document, match.field.get());
            hits.push_back(FieldHit{field, std::move(match.value), match.match});
        }
        // Then the text drawn by the page's other annotations: its matches cannot be replaced
        // (they name no field), the redaction takes their annotations.
        for (engine::AnnotationMatch& match : engine::FindInAnnotationAppearances(
                 document->Engine(), record->page, *needle.pattern)) {
            document->Terms().Record(record->page, *needle.text, match.rects);
            record->matches.push_back(std::move(match.rects));
            hits.push_back(FieldHit{nullptr, {}, match.match});
        }
        document->Searches().RecordFields(record->page, needle.text, flags, std::move(hits));
        return 1;
    });
}

int FieldTextFindNext(NdxFieldFind find) {
    return Guarded(
        0, [&](HostApp& app) { return StepToNextMatch(app, app.Texts().fieldFinders.Find(find)); });
}

void FieldTextFindGetRects(NdxFieldFind find, NdxRectArray rects) {
    Guarded([&](HostApp& app) {
        const FieldFindRecord* record = app.Texts().fieldFinders.Find(find);
        FillRects(app, rects,
                  record != nullptr && HasCurrent(*record)
                      ? record->matches[static_cast<std::size_t>(record->current)]
                      : std::vector<engine::Rect>{});
    });
}

// ---- Replacement

// Replaces match `ordinal` of the last search on page `pageIndex` (see search_memory.h): a match
// in the page's text as engine::ReplaceMatch does, a match in a field's value by writing the
// value with the new text in its place (refused if the value changed since the search). The
// document turns modified. Nonzero on success.
int DocReplaceText(HostDoc doc, int pageIndex, int ordinal, const wchar_t* text) {
    return Guarded(0, [&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        if (document == nullptr || text == nullptr)
            return 0;
        const std::optional<SearchHit> hit = document->Searches().Find(pageIndex, ordinal);
        if (!hit)
            return 0;
        if (const auto* placement = std::get_if<engine::MatchPlacement>(&*hit)) {
            engine::ReplaceMatch(document->Engine(), pageIndex, *placement, Utf8Of(text));
            app.MarkModified(*document);
            return 1;
        }
        const FieldHit& field = std::get<FieldHit>(*hit);
        pdf_obj* fieldObject = document->Objects().Find(reinterpret_cast<NdxObject>(field.field));
        engine::InteractiveForm form(document->Engine());
        if (fieldObject == nullptr || engine::DecodeUtf8(form.Value(fieldObject)) != field.value) {
            return 0;
        }
        const std::u32string inserted = Utf32Of(text);
        std::u32string value = field.value;
        value.replace(static_cast<std::size_t>(field.match.first),
                      static_cast<std::size_t>(field.match.count), inserted);
        if (!WriteFieldValue(app, *document, fieldObject, engine::EncodeUtf8(value), false))
            return 0;
        document->Searches().FieldEdited(field.field, field.value, field.match, inserted);
        return 1;
    });
}

}  // namespace

void RegisterTextTables(TableManager& tables) {
    tables.Register<Op::NDXTextPageNew>(&TextPageNew);
    tables.Register<Op::NDXTextPageDestroy>(&TextPageDestroy);
    tables.Register<Op::NDXTextPageParse>(&TextPageParse);
    tables.Register<Op::NDXTextPageIsParsed>(&TextPageIsParsed);
    tables.Register<Op::NDXTextFindNew>(&TextFindNew);
    tables.Register<Op::NDXTextFindDestroy>(&TextFindDestroy);
    tables.Register<Op::NDXTextFindStart>(&TextFindStart);
    tables.Register<Op::NDXTextFindNext>(&TextFindNext);
    tables.Register<Op::NDXTextFindGetRects>(&TextFindGetRects);
    tables.Register<Op::NDXTextFindGetCharIndex>(&TextFindGetCharIndex);
    tables.Register<Op::NDXTextFindGetCharCount>(&TextFindGetCharCount);
    tables.Register<Op::NDXFieldTextFindNew>(&FieldTextFindNew);
    tables.Register<Op::NDXFieldTextFindDestroy>(&FieldTextFindDestroy);
    tables.Register<Op::NDXFieldTextFindStart>(&FieldTextFindStart);
    tables.Register<Op::NDXFieldTextFindNext>(&FieldTextFindNext);
    tables.Register<Op::NDXFieldTextFindGetRects>(&FieldTextFindGetRects);
    tables.Register<Op::HostDocReplaceText>(&DocReplaceText);
}

}  // namespace pdfhost
