#include "search_result_store.h"

#include <algorithm>
#include <functional>

const SearchRecord& SearchResultStore::EmptyRecord() {
    static const SearchRecord kEmpty;
    return kEmpty;
}

const AnnotKey& SearchResultStore::EmptyKey() {
    static const AnnotKey kEmpty;
    return kEmpty;
}

namespace {

bool SameRect(const NdxRect& a, const NdxRect& b) {
    return a.left == b.left && a.bottom == b.bottom && a.right == b.right && a.top == b.top;
}

bool SamePiece(const SearchPiece& a, const SearchPiece& b) {
    return a.file == b.file && a.page == b.page && a.start == b.start && a.end == b.end &&
           a.index == b.index && a.searchKey == b.searchKey;
}

}  // namespace

SearchResultStore::StoredRecord SearchResultStore::Stored(const std::wstring& fileId,
                                                          const std::wstring& searchKey,
                                                          SearchRecord record) {
    StoredRecord stored{
        record.page, record.start, record.end, record.index, std::move(record.rects), nullptr};
    stored.rects.shrink_to_fit();
    if (record.file != fileId || record.searchKey != searchKey || !record.pieces.empty()) {
        stored.rest = std::make_shared<const RecordRest>(RecordRest{
            std::move(record.file), std::move(record.searchKey), std::move(record.pieces)});
    }
    return stored;
}

namespace {

template <typename Stored>
bool SameStored(const Stored& a, const Stored& b) {
    if (a.page != b.page || a.start != b.start || a.end != b.end || a.index != b.index ||
        !std::equal(a.rects.begin(), a.rects.end(), b.rects.begin(), b.rects.end(), SameRect)) {
        return false;
    }
    if (a.rest == nullptr || b.rest == nullptr)
        return a.rest == b.rest;
    return a.rest->file == b.rest->file && a.rest->searchKey == b.rest->searchKey &&
           std::equal(a.rest->pieces.begin(), a.rest->pieces.end(), b.rest->pieces.begin(),
                      b.rest->pieces.end(), SamePiece);
}

}  // namespace

void SearchResultStore::SetResults(const std::wstring& fileId, const std::wstring& searchKey,
                                   std::vector<SearchRecord> records) {
    RecordList list;
    list.reserve(records.size());
    for (SearchRecord& record : records)
        list.push_back(Stored(fileId, searchKey, std::move(record)));
    FileResults& file = results_[fileId];
    const auto same = [&](const RecordList& other) {
        return std::equal(list.begin(), list.end(), other.begin(), other.end(),
                          SameStored<StoredRecord>);
    };
    for (const std::weak_ptr<RecordList>& recent : file.recent) {
        if (std::shared_ptr<RecordList> shared = recent.lock(); shared && same(*shared)) {
            file.lists.insert_or_assign(SearchKey(searchKey), std::move(shared));
            return;
        }
    }
    auto stored = std::make_shared<RecordList>(std::move(list));
    file.lists.insert_or_assign(SearchKey(searchKey), stored);
    file.recent.push_back(stored);
    if (file.recent.size() > kRecentLists)
        file.recent.pop_front();
}

SearchResultStore::RecordList& SearchResultStore::OwnList(FileResults& file,
                                                          const std::wstring& searchKey) {
    std::shared_ptr<RecordList>& list = file.lists[SearchKey(searchKey)];
    if (!list)
        list = std::make_shared<RecordList>();
    else if (list.use_count() > 1)
        list = std::make_shared<RecordList>(*list);
    return *list;
}

void SearchResultStore::AppendResult(const std::wstring& fileId, const std::wstring& searchKey,
                                     SearchRecord record) {
    OwnList(results_[fileId], searchKey).push_back(Stored(fileId, searchKey, std::move(record)));
}

SearchRecord SearchResultStore::GetResult(const std::wstring& fileId, const std::wstring& searchKey,
                                          int64_t index) const {
    const auto file = results_.find(fileId);
    if (file == results_.end())
        return EmptyRecord();
    const auto list = file->second.lists.find(SearchKey(searchKey));
    if (list == file->second.lists.end() || index < 0 ||
        static_cast<uint64_t>(index) >= list->second->size()) {
        return EmptyRecord();
    }
    const StoredRecord& stored = (*list->second)[static_cast<std::size_t>(index)];
    SearchRecord record;
    record.page = stored.page;
    record.start = stored.start;
    record.end = stored.end;
    record.index = stored.index;
    record.rects = stored.rects;
    if (stored.rest != nullptr) {
        record.file = stored.rest->file;
        record.searchKey = stored.rest->searchKey;
        record.pieces = stored.rest->pieces;
    } else {
        record.file = fileId;
        record.searchKey = searchKey;
    }
    return record;
}

void SearchResultStore::RemoveFile(const std::wstring& fileId) {
    results_.erase(fileId);
}

void SearchResultStore::EraseAnnotsOfFile(const std::wstring& fileId) {
    const auto file = results_.find(fileId);
    if (file == results_.end())
        return;
    for (const auto& [key, list] : file->second.lists) {
        const std::wstring text = key.Text();
        for (std::size_t i = 0; i < list->size(); ++i)
            EraseAnnot(GetResult(fileId, text, static_cast<int64_t>(i)));
    }
}

// ---- Annotation entries

bool SearchResultStore::NameOrder::operator()(Entry a, Entry b) const {
    if (const int c = a->second.uniqueIDName.compare(b->second.uniqueIDName); c != 0)
        return c < 0;
    return a->first < b->first;
}

bool SearchResultStore::NameOrder::operator()(Entry a, std::wstring_view name) const {
    return std::wstring_view(a->second.uniqueIDName) < name;
}

bool SearchResultStore::NameOrder::operator()(std::wstring_view name, Entry b) const {
    return name < std::wstring_view(b->second.uniqueIDName);
}

bool SearchResultStore::HandleOrder::operator()(Entry a, Entry b) const {
    if (a->second.annot != b->second.annot)
        return std::less<HostAnnot>()(a->second.annot, b->second.annot);
    return a->first < b->first;
}

bool SearchResultStore::HandleOrder::operator()(Entry a, HostAnnot annot) const {
    return std::less<HostAnnot>()(a->second.annot, annot);
}

bool SearchResultStore::HandleOrder::operator()(HostAnnot annot, Entry b) const {
    return std::less<HostAnnot>()(annot, b->second.annot);
}

void SearchResultStore::SetAnnot(const SearchRecord& record, const std::wstring& name,
                                 HostAnnot annot) {
    const AnnotKey key = AnnotKey::Of(record);
    auto entry = annots_.find(key);
    if (entry == annots_.end()) {
        AnnotKey own = key;
        own.file = texts_.Hold(key.file);
        own.searchKey = texts_.Hold(key.searchKey);
        entry = annots_.emplace(own, AnnotRecord{}).first;
    } else {
        Unindex(entry);
    }
    entry->second.uniqueIDName = name;
    if (annot != nullptr)
        entry->second.annot = annot;
    Index(entry);
}

const AnnotRecord& SearchResultStore::FindAnnot(const SearchRecord& record) const {
    static const AnnotRecord kNone;
    const auto found = annots_.find(AnnotKey::Of(record));
    return found != annots_.end() ? found->second : kNone;
}

bool SearchResultStore::IsAnnotated(const SearchRecord& record) const {
    const auto found = annots_.find(AnnotKey::Of(record));
    return found != annots_.end() && found->second.annot != nullptr;
}

void SearchResultStore::ClearAnnotHandle(const SearchRecord& record) {
    const auto found = annots_.find(AnnotKey::Of(record));
    if (found == annots_.end())
        return;
    Unindex(found);
    found->second.annot = nullptr;
    Index(found);
}

void SearchResultStore::EraseAnnot(const SearchRecord& record) {
    EraseAnnot(AnnotKey::Of(record));
}

void SearchResultStore::EraseAnnot(const AnnotKey& key) {
    const auto found = annots_.find(key);
    if (found == annots_.end())
        return;
    const std::wstring_view file = found->first.file;
    const std::wstring_view searchKey = found->first.searchKey;
    Unindex(found);
    annots_.erase(found);
    texts_.Release(file);
    texts_.Release(searchKey);
}

void SearchResultStore::Index(Entry entry) {
    byName_.insert(entry);
    byHandle_.insert(entry);
}

void SearchResultStore::Unindex(Entry entry) {
    byName_.erase(entry);
    byHandle_.erase(entry);
}

SearchResultStore::Entry SearchResultStore::FirstNamed(const std::wstring& name) const {
    const auto first = byName_.lower_bound(std::wstring_view(name));
    return first != byName_.end() && (*first)->second.uniqueIDName == name ? *first : annots_.end();
}

SearchResultStore::Entry SearchResultStore::FirstWithHandle(HostAnnot annot) const {
    const auto first = byHandle_.lower_bound(annot);
    return first != byHandle_.end() && (*first)->second.annot == annot ? *first : annots_.end();
}

int32_t SearchResultStore::GetPageIdxByAnnotUniqueID(const std::wstring& name) const {
    const auto entry = FirstNamed(name);
    return entry != annots_.end() ? entry->first.page : -1;
}

HostAnnot SearchResultStore::GetRecordAnnot(const std::wstring& name) const {
    const auto entry = FirstNamed(name);
    return entry != annots_.end() ? entry->second.annot : nullptr;
}

const AnnotKey& SearchResultStore::FindRecordByAnnot(HostAnnot annot) const {
    const auto entry = FirstWithHandle(annot);
    return entry != annots_.end() ? entry->first : EmptyKey();
}

const AnnotKey& SearchResultStore::FindRecordByUniqueID(const std::wstring& name) const {
    const auto entry = FirstNamed(name);
    return entry != annots_.end() ? entry->first : EmptyKey();
}
