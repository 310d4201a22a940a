#include "text_search_dispatchers.h"

#include <algorithm>
#include <cmath>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/document_registry.h"
#include "redaction/page_text_search.h"
#include "redaction/redaction_services.h"
#include "redaction/request_fields.h"
#include "redaction/search_result_store.h"
#include "util/utf.h"

namespace {

// `mode` of findTexts: used when it is an integer of at least 1.
uint32_t SearchFlagsOf(const Json::Value& root) {
    const std::optional<int64_t> mode = JsonInteger(Member(root, "mode"));
    return mode && *mode >= 1 ? static_cast<uint32_t>(*mode) : 0;
}

// The flags of a findTextList entry, passed on as they stand; empty for a value that is no
// number (a text, an array, an object).
std::optional<uint32_t> EntryFlagsOf(const Json::Value& value) {
    if (const std::optional<int64_t> integer = JsonInteger(value))
        return static_cast<uint32_t>(*integer);
    switch (value.type()) {
        case Json::nullValue:
            return 0u;
        case Json::booleanValue:
            return value.asBool() ? 1u : 0u;
        case Json::realValue: {
            const double number = std::trunc(value.asDouble());
            constexpr double kLimit = 9.2e18;
            if (!std::isfinite(number) || std::fabs(number) > kLimit)
                return std::nullopt;
            return static_cast<uint32_t>(static_cast<int64_t>(number));
        }
        default:
            return std::nullopt;
    }
}

Json::Value CountAndKey(std::size_t count, const std::wstring& key) {
    Json::Value entry(Json::objectValue);
    entry["count"] = static_cast<Json::UInt64>(count);
    entry["searchKey"] = ToUtf8(key);
    return entry;
}

}  // namespace

std::optional<PageRange> RequestedRange(const Json::Value& params, int pageCount) {
    const std::optional<int64_t> start = JsonInteger(Member(params, "startPage"));
    const std::optional<int64_t> end = JsonInteger(Member(params, "endPage"));
    const int64_t first = start && *start >= 0 ? *start : 0;
    const int64_t last = end && *end >= 0 ? *end : int64_t{pageCount} - 1;
    if (pageCount < 1 || first > last || last >= pageCount)
        return std::nullopt;
    return PageRange{static_cast<int>(first), static_cast<int>(last)};
}

std::vector<int> PagesToWalk(const Json::Value& params, const PageRange& range, int pageCount) {
    std::vector<int> pages;
    const Json::Value& list = Member(params, "pageList");
    if (list.isArray() && !list.empty()) {
        for (const Json::Value& entry : list) {
            const std::optional<int64_t> page = JsonInteger(entry);
            if (page && *page >= 0 && *page < pageCount)
                pages.push_back(static_cast<int>(*page));
        }
        return pages;
    }
    for (int page = range.first; page <= range.last; ++page)
        pages.push_back(page);
    return pages;
}

int32_t FindTextsDispatcher::FindTarget(const Json::Value& root, Target& target) const {
    const CheckedDocument checked = CheckCurrentDocument(services_.documents, {.pdf = true});
    if (!checked)
        return checked.error;
    target.doc = checked.doc;
    target.pdf = checked.pdf;
    target.pageCount = services_.host.NDXDocGetPageCount(target.pdf);
    const std::optional<PageRange> range = RequestedRange(root, target.pageCount);
    if (!range)
        return err::kInvalidStartPage;
    target.range = *range;
    return err::kOk;
}

SearchResultStore* FindTextsDispatcher::Store() const {
    return services_.documents.searchResults();
}

Json::Value FindTextsDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring fileId = FileIdOf(root);
    if (fileId.empty())
        return Fail(err::kNoId);
    const Json::Value& text = Member(root, "text");
    if (text.isNull() || (text.isString() && text.asString().empty()) ||
        (text.isArray() && text.size() < 2) || IsOverlongText(text) ||
        (text.isArray() && std::any_of(text.begin(), text.end(), IsOverlongText))) {
        return Fail(err::kNoText);
    }
    Target target;
    if (const int32_t code = FindTarget(root, target); code != err::kOk)
        return Fail(code);
    if (!text.isString() && !text.isArray())
        return Fail(err::kNoText);
    if (Store() == nullptr)
        return Fail(err::kNoResultForSearchKey);
    return text.isArray() ? RunSpanning(root, target, fileId) : RunOrdinary(root, target, fileId);
}

Json::Value FindTextsDispatcher::RunOrdinary(const Json::Value& root, const Target& target,
                                             const std::wstring& fileId) {
    MatchQuery query;
    query.text = TextOf(Member(root, "text"));
    query.flags = SearchFlagsOf(root);
    query.fileId = fileId;
    query.searchKey = NewGuidText();
    query.fieldCharIndex = 0;

    PageTextSearch search(services_.host, target.doc, target.pdf);
    std::vector<SearchRecord> results;
    int total = 0;
    for (int page : PagesToWalk(root, target.range, target.pageCount)) {
        const PreparedPage prepared = search.Prepare(page);
        if (!prepared.finder)
            continue;
        const bool fields = search.HasFieldFinderText(prepared.pdfPage);
        total += search.FindAll(prepared, page, query, fields, results);
    }
    if (total == 0)
        return Fail(err::kNoFindResult);
    Store()->SetResults(fileId, query.searchKey, std::move(results));
    return MakeResult(err::kOk, CountAndKey(static_cast<std::size_t>(total), query.searchKey));
}

// A passage the page split at page breaks: the last occurrence of the first part on its page,
// then each further part at its first occurrence on a later page, as pieces of that record.
Json::Value FindTextsDispatcher::RunSpanning(const Json::Value& root, const Target& target,
                                             const std::wstring& fileId) {
    const Json::Value& text = Member(root, "text");
    std::vector<std::wstring> parts;
    for (const Json::Value& part : text)
        parts.push_back(TextOf(part));
    const uint32_t flags = SearchFlagsOf(root);
    const std::wstring searchKey = NewGuidText();
    HostApi& host = services_.host;

    PageTextSearch search(host, target.doc, target.pdf);
    SearchRecord passage;
    std::size_t position = 0;
    bool firstPartDone = false;
    bool complete = false;
    for (int page = target.range.first; page <= target.range.last && !complete; ++page) {
        const PreparedPage prepared = search.Prepare(page);
        NdxTextFind finder = prepared.finder.get();
        if (finder == nullptr)
            continue;
        if (!firstPartDone) {
            if (host.NDXTextFindStart(finder, parts[0].c_str(), flags, 0) == 0)
                continue;
            for (int32_t ordinal = 0; host.NDXTextFindNext(finder) != 0; ++ordinal)
                passage = search.MatchRecord(finder, page, ordinal);
            firstPartDone = true;
            continue;
        }
        if (host.NDXTextFindStart(finder, parts[position + 1].c_str(), flags, 0) == 0)
            continue;
        if (host.NDXTextFindNext(finder) != 0) {
            SearchPiece piece;
            piece.page = page;
            piece.start = host.NDXTextFindGetCharIndex(finder);
            const int64_t count = host.NDXTextFindGetCharCount(finder);
            piece.end = static_cast<int32_t>(piece.start + count - 1);
            passage.pieces.push_back(std::move(piece));
            ++position;
        }
        complete = position + 1 == parts.size();
    }
    if (!complete)
        return Fail(err::kNoFindResult);
    Store()->SetResults(fileId, searchKey, {std::move(passage)});
    return MakeResult(err::kOk, CountAndKey(1, searchKey));
}

Json::Value FindTextListDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring fileId = FileIdOf(root);
    if (fileId.empty())
        return Fail(err::kNoId);
    const Json::Value& textList = Member(root, "textList");
    if (!textList.isArray())
        return Fail(err::kNoText);
    Target target;
    if (const int32_t code = FindTarget(root, target); code != err::kOk)
        return Fail(code);
    if (Store() == nullptr)
        return Fail(err::kNoResultForSearchKey);

    const Json::ArrayIndex entries = textList.size();
    std::vector<std::wstring> keys;
    for (Json::ArrayIndex i = 0; i < entries; ++i)
        keys.push_back(NewGuidText());
    std::vector<std::vector<SearchRecord>> lists(entries);
    // Each entry's text in the host's encoding, made when the walk first reaches it.
    std::vector<std::optional<std::wstring>> texts(entries);

    PageTextSearch search(services_.host, target.doc, target.pdf);
    int total = 0;
    for (int page = target.range.first; page <= target.range.last; ++page) {
        const bool fields = search.HasFieldFinderText(search.PdfPage(page));
        for (Json::ArrayIndex i = 0; i < entries; ++i) {
            const Json::Value& entry = textList[i];
            if (!entry.isArray() || entry.size() != 2 || entry[0].isArray() ||
                entry[0].isObject() || IsOverlongText(entry[0]))
                return Fail(err::kNoType);
            const std::optional<uint32_t> flags = EntryFlagsOf(entry[1]);
            if (!flags)
                return Fail(err::kNoType);
            if (!texts[i])
                texts[i] = TextOf(entry[0]);
            MatchQuery query;
            query.text = *texts[i];
            query.flags = *flags;
            query.fileId = fileId;
            query.searchKey = keys[i];
            query.fieldCharIndex = -1;
            const PreparedPage prepared = search.Prepare(page);
            if (!prepared.finder)
                continue;
            total += search.FindAll(prepared, page, query, fields, lists[i]);
        }
    }

    Json::Value data(Json::arrayValue);
    for (Json::ArrayIndex i = 0; i < entries; ++i) {
        data.append(CountAndKey(lists[i].size(), keys[i]));
        Store()->SetResults(fileId, keys[i], std::move(lists[i]));
    }
    if (total == 0)
        return Fail(err::kNoFindResult);
    return MakeResult(err::kOk, data);
}
