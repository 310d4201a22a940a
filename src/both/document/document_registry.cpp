#include "document_registry.h"

#include <filesystem>

#include "util/confined_files.h"
#include "util/utf.h"
#include "util/wide_path.h"

namespace {

template <typename Pred>
const std::pair<const std::wstring, DocumentRecord>* FindFirst(
    const std::map<std::wstring, DocumentRecord>& records, Pred pred) {
    for (const auto& entry : records) {
        if (pred(entry.second))
            return &entry;
    }
    return nullptr;
}

}  // namespace

DocumentRegistry::~DocumentRegistry() {
    for (const auto& [id, record] : records_) {
        if (!record.isTemp || record.path.empty())
            continue;
        RemoveInside(PathOfWide(record.scratchRoot), PathOfWide(record.path), false);
    }
}

bool DocumentRegistry::findIdByDoc(HostDoc doc, std::wstring& id) const {
    if (doc == nullptr)
        return false;
    const auto* found =
        FindFirst(records_, [doc](const DocumentRecord& r) { return r.doc == doc; });
    if (found == nullptr)
        return false;
    id = found->first;
    return true;
}

bool DocumentRegistry::findDocById(const std::wstring& id, HostDoc& doc) const {
    if (id.empty())
        return false;
    const auto it = records_.find(id);
    if (it == records_.end() || it->second.doc == nullptr)
        return false;
    doc = it->second.doc;
    return true;
}

bool DocumentRegistry::findIdByPath(const std::wstring& path, std::wstring& id) const {
    if (path.empty())
        return false;
    const auto* found =
        FindFirst(records_, [&path](const DocumentRecord& r) { return r.path == path; });
    if (found == nullptr || found->first.empty())
        return false;
    id = found->first;
    return true;
}

bool DocumentRegistry::pathOf(const std::wstring& id, std::wstring& path) const {
    return TextOfRecord(id, &DocumentRecord::path, path);
}

bool DocumentRegistry::aiFileIdOf(const std::wstring& id, std::wstring& aiFileId) const {
    return TextOfRecord(id, &DocumentRecord::aiFileId, aiFileId);
}

bool DocumentRegistry::aiFileIdOfPath(const std::wstring& path, std::wstring& aiFileId) const {
    return TextOfFirst(&DocumentRecord::path, path, &DocumentRecord::aiFileId, aiFileId);
}

bool DocumentRegistry::isTempOf(const std::wstring& id) const {
    const auto it = records_.find(id);
    return it != records_.end() && it->second.isTemp;
}

bool DocumentRegistry::docByAiFileHead(const std::wstring& head, HostDoc& doc) const {
    if (head.empty())
        return false;
    const auto* found =
        FindFirst(records_, [&head](const DocumentRecord& r) { return r.aiFileHead == head; });
    if (found == nullptr || found->second.doc == nullptr)
        return false;
    doc = found->second.doc;
    return true;
}

bool DocumentRegistry::aiFileTailByHead(const std::wstring& head, std::wstring& tail) const {
    return TextOfFirst(&DocumentRecord::aiFileHead, head, &DocumentRecord::aiFileTail, tail);
}

bool DocumentRegistry::TextOfRecord(const std::wstring& id, std::wstring DocumentRecord::*field,
                                    std::wstring& out) const {
    if (id.empty())
        return false;
    const auto it = records_.find(id);
    if (it == records_.end() || (it->second.*field).empty())
        return false;
    out = it->second.*field;
    return true;
}

bool DocumentRegistry::TextOfFirst(std::wstring DocumentRecord::*key, const std::wstring& value,
                                   std::wstring DocumentRecord::*field, std::wstring& out) const {
    if (value.empty())
        return false;
    const auto* found =
        FindFirst(records_, [&](const DocumentRecord& r) { return r.*key == value; });
    if (found == nullptr || (found->second.*field).empty())
        return false;
    out = found->second.*field;
    return true;
}

std::wstring DocumentRegistry::newIdForPath(const std::wstring& path) {
    std::wstring old;
    if (findIdByPath(path, old))
        records_.erase(old);
    return NewGuidText();
}

void DocumentRegistry::bindDoc(const std::wstring& id, HostDoc doc) {
    if (id.empty() || doc == nullptr)
        return;
    records_[id].doc = doc;
}

void DocumentRegistry::bindPath(const std::wstring& id, const std::wstring& path) {
    if (id.empty() || path.empty())
        return;
    DocumentRecord& record = records_[id];
    record.path = path;
    record.isTemp = false;
    record.scratchRoot.clear();
}

void DocumentRegistry::bindScratchPath(const std::wstring& id, const std::wstring& path,
                                       const std::wstring& root) {
    if (id.empty() || path.empty() || root.empty())
        return;
    DocumentRecord& record = records_[id];
    record.path = path;
    record.isTemp = true;
    record.scratchRoot = root;
}

void DocumentRegistry::bindAiFileId(const std::wstring& id, const std::wstring& aiFileId) {
    if (id.empty() || aiFileId.empty())
        return;
    std::wstring head;
    std::wstring tail;
    const auto dash = aiFileId.rfind(L'-');
    if (dash != std::wstring::npos) {
        head = aiFileId.substr(0, dash);
        tail = aiFileId.substr(dash + 1);
    }
    DocumentRecord& record = records_[id];
    record.aiFileId = aiFileId;
    record.aiFileHead = head;
    record.aiFileTail = tail;
}

void DocumentRegistry::erase(const std::wstring& id) {
    if (!id.empty())
        records_.erase(id);
}

void DocumentRegistry::forgetDoc(const std::wstring& id) {
    const auto it = records_.find(id);
    if (it == records_.end())
        return;
    it->second.doc = nullptr;
    it->second.aiFileId.clear();
    it->second.aiFileHead.clear();
}
