// SearchResultStore: the one store of search results and of the annotations made from them.
// `results` maps file id -> search key -> the records in the order a search produced them (the
// position in that list is what commands call `index`); `annots` maps a whole record, by its
// total order, to the annotation made from it. Lookups by name or handle walk `annots` in key
// order and the first match wins (kept in indexes, so they cost no walk).
//
// Lists stay until their file closes, however many searches the page runs, so they are kept
// small: a record does not hold its file id and search key when they are the list's own (they
// are put back when it is read), and a search that found exactly what one of the file's recent
// searches found shares that list instead of storing a copy; keys are kept in 16 bytes.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "redaction/annot_record.h"
#include "redaction/search_key.h"
#include "redaction/search_record.h"

class SearchResultStore {
  public:
    // The record every failed lookup gives: `page` -1.
    static const SearchRecord& EmptyRecord();

    // Replaces the list under (fileId, searchKey), creating what is missing.
    void SetResults(const std::wstring& fileId, const std::wstring& searchKey,
                    std::vector<SearchRecord> records);
    void AppendResult(const std::wstring& fileId, const std::wstring& searchKey,
                      SearchRecord record);
    // The record at `index` of that list, or the empty record.
    SearchRecord GetResult(const std::wstring& fileId, const std::wstring& searchKey,
                           int64_t index) const;
    // Forgets the file's results; its annotation entries are dropped by EraseAnnotsOfFile first.
    void RemoveFile(const std::wstring& fileId);
    // Erases the annotation entry of every record the file holds in `results`.
    void EraseAnnotsOfFile(const std::wstring& fileId);

    // Creates the entry if missing, sets its name, and its handle unless `annot` is null.
    void SetAnnot(const SearchRecord& record, const std::wstring& name, HostAnnot annot);
    // The entry of that record, or an empty one whose handle is null.
    const AnnotRecord& FindAnnot(const SearchRecord& record) const;
    // An entry exists with a handle, under a key with the same page, index, start and end.
    bool IsAnnotated(const SearchRecord& record) const;
    // Keeps the entry and forgets its handle (the annotation is gone from the document).
    void ClearAnnotHandle(const SearchRecord& record);
    void EraseAnnot(const SearchRecord& record);

    int32_t GetPageIdxByAnnotUniqueID(const std::wstring& name) const;
    HostAnnot GetRecordAnnot(const std::wstring& name) const;
    const SearchRecord& FindRecordByAnnot(HostAnnot annot) const;
    const SearchRecord& FindRecordByUniqueID(const std::wstring& name) const;

    const std::map<SearchRecord, AnnotRecord>& annots() const { return annots_; }

  private:
    // A record as a list keeps it: without its file id and search key when `named` (they are
    // then the list's own).
    struct StoredRecord {
        SearchRecord record;
        bool named = false;
    };
    using RecordList = std::vector<StoredRecord>;
    // A file's lists, and the last few it stored, to be shared by searches that find the same.
    struct FileResults {
        std::map<SearchKey, std::shared_ptr<RecordList>> lists;
        std::deque<std::weak_ptr<RecordList>> recent;
    };
    static constexpr std::size_t kRecentLists = 8;

    static StoredRecord Stored(const std::wstring& fileId, const std::wstring& searchKey,
                               SearchRecord record);
    // `lists` holds a list of its own under the key, to be changed in place.
    static RecordList& OwnList(FileResults& file, const std::wstring& searchKey);
    using AnnotMap = std::map<SearchRecord, AnnotRecord>;
    // Entries in the map's own order, so the first of a set is the first a walk would meet.
    struct MapOrder {
        bool operator()(AnnotMap::const_iterator a, AnnotMap::const_iterator b) const {
            return a->first < b->first;
        }
    };
    using Entries = std::set<AnnotMap::const_iterator, MapOrder>;

    // The first entry with that name or handle, or the map's end.
    AnnotMap::const_iterator FirstNamed(const std::wstring& name) const;
    AnnotMap::const_iterator FirstWithHandle(HostAnnot annot) const;
    void Unindex(AnnotMap::const_iterator entry);

    std::map<std::wstring, FileResults> results_;
    AnnotMap annots_;
    // Indexes of `annots_` by name and by handle, so lookups need not walk the map.
    std::unordered_map<std::wstring, Entries> byName_;
    std::unordered_map<HostAnnot, Entries> byHandle_;
};
