// SearchResultStore: the one store of search results and of the annotations made from them.
// `results` maps file id -> search key -> the records in the order a search produced them (the
// position in that list is what commands call `index`); `annots` maps a record's key (AnnotKey:
// its total order without the rectangles) to the annotation made from it. Lookups by name or
// handle give the first entry in key order (kept in indexes, so they cost no walk).
//
// Lists stay until their file closes, however many searches the page runs, and an annotation
// entry until its annotation goes, so both are kept small: a listed record holds its place and
// rectangles, and its file id, search key and pieces only when they are not the list's own; a
// search that found exactly what one of the file's recent searches found shares that list; list
// keys are kept in 16 bytes, and the entries' keys view one pooled copy of each file id and
// search key.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "redaction/annot_key.h"
#include "redaction/annot_record.h"
#include "redaction/search_key.h"
#include "redaction/search_record.h"
#include "redaction/text_pool.h"

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

    // The key of every failed lookup: `page` -1.
    static const AnnotKey& EmptyKey();

    // Creates the entry if missing, sets its name, and its handle unless `annot` is null.
    void SetAnnot(const SearchRecord& record, const std::wstring& name, HostAnnot annot);
    // The entry of that record, or an empty one whose handle is null.
    const AnnotRecord& FindAnnot(const SearchRecord& record) const;
    // An entry exists with a handle, under a key with the same page, index, start and end.
    bool IsAnnotated(const SearchRecord& record) const;
    // Keeps the entry and forgets its handle (the annotation is gone from the document).
    void ClearAnnotHandle(const SearchRecord& record);
    void EraseAnnot(const SearchRecord& record);
    // `key` may be an entry's own key, as the two lookups below give it.
    void EraseAnnot(const AnnotKey& key);

    int32_t GetPageIdxByAnnotUniqueID(const std::wstring& name) const;
    HostAnnot GetRecordAnnot(const std::wstring& name) const;
    // The key of the first entry with that handle or name, or the empty key.
    const AnnotKey& FindRecordByAnnot(HostAnnot annot) const;
    const AnnotKey& FindRecordByUniqueID(const std::wstring& name) const;

    const std::map<AnnotKey, AnnotRecord>& annots() const { return annots_; }

  private:
    // What a listed record holds beyond its place and rectangles, when the list's own file id
    // and key are not its own or it runs over a page break.
    struct RecordRest {
        std::wstring file;
        std::wstring searchKey;
        std::vector<SearchPiece> pieces;
    };
    struct StoredRecord {
        int32_t page = -1;
        int32_t start = -1;
        int32_t end = -1;
        int32_t index = -1;
        std::vector<NdxRect> rects;
        std::shared_ptr<const RecordRest> rest;  // null: the list's file id and key, no pieces
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
    using AnnotMap = std::map<AnnotKey, AnnotRecord>;
    using Entry = AnnotMap::const_iterator;
    // The entries by name, then by key: the first with a name is where a search for it lands.
    struct NameOrder {
        using is_transparent = void;
        bool operator()(Entry a, Entry b) const;
        bool operator()(Entry a, std::wstring_view name) const;
        bool operator()(std::wstring_view name, Entry b) const;
    };
    // The entries by handle, then by key.
    struct HandleOrder {
        using is_transparent = void;
        bool operator()(Entry a, Entry b) const;
        bool operator()(Entry a, HostAnnot annot) const;
        bool operator()(HostAnnot annot, Entry b) const;
    };

    // The first entry with that name or handle, or the map's end.
    Entry FirstNamed(const std::wstring& name) const;
    Entry FirstWithHandle(HostAnnot annot) const;
    void Index(Entry entry);
    void Unindex(Entry entry);

    std::map<std::wstring, FileResults> results_;
    TextPool texts_;  // what the keys of `annots_` view
    AnnotMap annots_;
    std::set<Entry, NameOrder> byName_;
    std::set<Entry, HandleOrder> byHandle_;
};
