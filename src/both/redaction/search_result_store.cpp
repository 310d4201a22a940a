#include "search_result_store.h"

#include <algorithm>

const SearchRecord& SearchResultStore::EmptyRecord() {
    static const SearchRecord kEmpty;
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

bool SameRecord(const SearchRecord& a, const SearchRecord& b) {
    return a.file == b.file && a.page == b.page && a.start == b.start && a.end == b.end &&
           a.index == b.index && a.searchKey == b.searchKey &&
           std::equal(a.pieces.begin(), a.pieces.end(), b.pieces.begin(), b.pieces.end(),
                      SamePiece) &&
           std::equal(a.rects.begin(), a.rects.end(), b.rects.begin(), b.rects.end(), SameRect);
}

}  // namespace

SearchResultStore::StoredRecord SearchResultStore::Stored(const std::wstring& fileId,
                                                          const std::wstring& searchKey,
                                                          SearchRecord record) {
    StoredRecord stored;
    stored.named = record.file == fileId && record.searchKey == searchKey;
    if (stored.named) {
        record.file = std::wstring();
        record.searchKey = std::wstring();
    }
    record.rects.shrink_to_fit();
    stored.record = std::move(record);
    return stored;
}

void SearchResultStore::SetResults(const std::wstring& fileId, const std::wstring& searchKey,
                                   std::vector<SearchRecord> records) {
    RecordList list;
    list.reserve(records.size());
    for (SearchRecord& record : records)
        list.push_back(Stored(fileId, searchKey, std::move(record)));
    FileResults& file = results_[fileId];
    const auto same = [&](const RecordList& other) {
        return std::equal(list.begin(), list.end(), other.begin(), other.end(),
                          [](const StoredRecord& a, const StoredRecord& b) {
                              return a.named == b.named && SameRecord(a.record, b.record);
                          });
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
    SearchRecord record = stored.record;
    if (stored.named) {
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

void SearchResultStore::SetAnnot(const SearchRecord& record, const std::wstring& name,
                                 HostAnnot annot) {
    auto [entry, added] = annots_.try_emplace(record);
    if (!added)
        Unindex(entry);
    entry->second.uniqueIDName = name;
    if (annot != nullptr)
        entry->second.annot = annot;
    byName_[name].insert(entry);
    byHandle_[entry->second.annot].insert(entry);
}

const AnnotRecord& SearchResultStore::FindAnnot(const SearchRecord& record) const {
    static const AnnotRecord kNone;
    const auto found = annots_.find(record);
    return found != annots_.end() ? found->second : kNone;
}

bool SearchResultStore::IsAnnotated(const SearchRecord& record) const {
    const auto found = annots_.find(record);
    if (found == annots_.end() || found->second.annot == nullptr)
        return false;
    const SearchRecord& key = found->first;
    return key.page == record.page && key.index == record.index && key.start == record.start &&
           key.end == record.end;
}

void SearchResultStore::ClearAnnotHandle(const SearchRecord& record) {
    const auto found = annots_.find(record);
    if (found == annots_.end())
        return;
    Unindex(found);
    found->second.annot = nullptr;
    byName_[found->second.uniqueIDName].insert(found);
    byHandle_[nullptr].insert(found);
}

void SearchResultStore::EraseAnnot(const SearchRecord& record) {
    const auto found = annots_.find(record);
    if (found == annots_.end())
        return;
    Unindex(found);
    annots_.erase(found);
}

void SearchResultStore::Unindex(AnnotMap::const_iterator entry) {
    const auto drop = [&](auto& index, const auto& key) {
        const auto set = index.find(key);
        if (set == index.end())
            return;
        set->second.erase(entry);
        if (set->second.empty())
            index.erase(set);
    };
    drop(byName_, entry->second.uniqueIDName);
    drop(byHandle_, entry->second.annot);
}

SearchResultStore::AnnotMap::const_iterator SearchResultStore::FirstNamed(
    const std::wstring& name) const {
    const auto set = byName_.find(name);
    return set != byName_.end() ? *set->second.begin() : annots_.end();
}

SearchResultStore::AnnotMap::const_iterator SearchResultStore::FirstWithHandle(
    HostAnnot annot) const {
    const auto set = byHandle_.find(annot);
    return set != byHandle_.end() ? *set->second.begin() : annots_.end();
}

int32_t SearchResultStore::GetPageIdxByAnnotUniqueID(const std::wstring& name) const {
    const auto entry = FirstNamed(name);
    return entry != annots_.end() ? entry->first.page : -1;
}

HostAnnot SearchResultStore::GetRecordAnnot(const std::wstring& name) const {
    const auto entry = FirstNamed(name);
    return entry != annots_.end() ? entry->second.annot : nullptr;
}

const SearchRecord& SearchResultStore::FindRecordByAnnot(HostAnnot annot) const {
    const auto entry = FirstWithHandle(annot);
    return entry != annots_.end() ? entry->first : EmptyRecord();
}

const SearchRecord& SearchResultStore::FindRecordByUniqueID(const std::wstring& name) const {
    const auto entry = FirstNamed(name);
    return entry != annots_.end() ? entry->first : EmptyRecord();
}
