#include "search_result_store.h"

const SearchRecord& SearchResultStore::EmptyRecord() {
    static const SearchRecord kEmpty;
    return kEmpty;
}

void SearchResultStore::SetResults(const std::wstring& fileId, const std::wstring& searchKey,
                                   std::vector<SearchRecord> records) {
    results_[fileId][searchKey] = std::move(records);
}

void SearchResultStore::AppendResult(const std::wstring& fileId, const std::wstring& searchKey,
                                     SearchRecord record) {
    results_[fileId][searchKey].push_back(std::move(record));
}

const SearchRecord& SearchResultStore::GetResult(const std::wstring& fileId,
                                                 const std::wstring& searchKey,
                                                 int64_t index) const {
    const auto file = results_.find(fileId);
    if (file == results_.end())
        return EmptyRecord();
    const auto list = file->second.find(searchKey);
    if (list == file->second.end() || index < 0 ||
        static_cast<uint64_t>(index) >= list->second.size()) {
        return EmptyRecord();
    }
    return list->second[static_cast<std::size_t>(index)];
}

void SearchResultStore::RemoveFile(const std::wstring& fileId) {
    results_.erase(fileId);
}

void SearchResultStore::EraseAnnotsOfFile(const std::wstring& fileId) {
    const auto file = results_.find(fileId);
    if (file == results_.end())
        return;
    for (const auto& [key, records] : file->second) {
        for (const SearchRecord& record : records)
            EraseAnnot(record);
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
