// DocumentRegistry: the in-memory table from a file id (a GUID text) to what the plug-in knows of
// a document: its host handle while open, its path, the page's service id and whether the file is
// a scratch copy to delete at the end. Lookups other than by id walk the records in id order; the
// first match wins.
#pragma once

#include <map>
#include <string>

#include "host/host_abi.h"

struct DocumentRecord {
    HostDoc doc = nullptr;
    std::wstring path;
    std::wstring spareText;
    std::wstring aiFileId;
    std::wstring aiFileHead;  // aiFileId before its last "-"
    std::wstring aiFileTail;  // aiFileId after its last "-"
    bool isTemp = false;
    std::wstring scratchRoot;  // the folder a scratch copy must lie in to be deleted
};

class DocumentRegistry {
  public:
    DocumentRegistry() = default;
    // Deletes the file of every record marked as a scratch copy, when it still lies inside the
    // folder it was made in; the folders stay.
    ~DocumentRegistry();
    DocumentRegistry(const DocumentRegistry&) = delete;
    DocumentRegistry& operator=(const DocumentRegistry&) = delete;

    bool findIdByDoc(HostDoc doc, std::wstring& id) const;
    bool findDocById(const std::wstring& id, HostDoc& doc) const;
    bool findIdByPath(const std::wstring& path, std::wstring& id) const;
    bool pathOf(const std::wstring& id, std::wstring& path) const;
    bool aiFileIdOf(const std::wstring& id, std::wstring& aiFileId) const;
    bool aiFileIdOfPath(const std::wstring& path, std::wstring& aiFileId) const;
    bool isTempOf(const std::wstring& id) const;
    bool docByAiFileHead(const std::wstring& head, HostDoc& doc) const;
    bool aiFileTailByHead(const std::wstring& head, std::wstring& tail) const;

    // Erases the record that holds `path`, if any, and returns a fresh id (not yet bound).
    std::wstring newIdForPath(const std::wstring& path);
    void bindDoc(const std::wstring& id, HostDoc doc);
    void bindPath(const std::wstring& id, const std::wstring& path);
    // A scratch copy made by the plug-in inside `root`: deleted with the registry.
    void bindScratchPath(const std::wstring& id, const std::wstring& path,
                         const std::wstring& root);
    void bindAiFileId(const std::wstring& id, const std::wstring& aiFileId);
    void erase(const std::wstring& id);
    // At document close: forgets the handle, aiFileId and its head; keeps path, tail and isTemp.
    void forgetDoc(const std::wstring& id);

    const std::map<std::wstring, DocumentRecord>& records() const { return records_; }

  private:
    // A text field of the record with that id; false when absent or empty.
    bool TextOfRecord(const std::wstring& id, std::wstring DocumentRecord::*field,
                      std::wstring& out) const;
    // A text field of the first record (in id order) whose `key` equals `value`.
    bool TextOfFirst(std::wstring DocumentRecord::*key, const std::wstring& value,
                     std::wstring DocumentRecord::*field, std::wstring& out) const;

    std::map<std::wstring, DocumentRecord> records_;
};

// A fresh GUID as upper-case text in braces, {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}. The platform
// layer defines it: a random version-4 GUID on Linux, the system's own on Windows.
std::wstring NewGuidText();
