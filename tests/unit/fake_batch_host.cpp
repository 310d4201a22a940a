#include "fake_batch_host.h"

#include <cstdint>
#include <cstring>

HostDoc FakeBatchHost::HostDocOpenHidden(const wchar_t* path,
                                         const HostOpenHiddenOptions* options) {
    const auto file = files.find(path);
    if (file == files.end() || options == nullptr || options->keepHidden != 1)
        return nullptr;
    hiddenOpens.emplace_back(path);
    hidden_.push_back(std::make_unique<FakeDoc>(file->second));
    ++liveHidden;
    return reinterpret_cast<HostDoc>(hidden_.back().get());
}

void FakeBatchHost::HostDocClose(HostDoc doc, int, int, int) {
    closes.push_back(Doc(doc).path);
    for (auto it = hidden_.begin(); it != hidden_.end(); ++it) {
        if (reinterpret_cast<HostDoc>(it->get()) == doc) {
            hidden_.erase(it);
            --liveHidden;
            return;
        }
    }
    Close(doc);
}

// The catalogue is the document itself; its form dictionary, when it has XFA, is its `xfa` flag.
NdxObject FakeBatchHost::NDXDictGet(NdxObject dict, const char* key) {
    if (dict == nullptr)
        return nullptr;
    if (std::strcmp(key, "AcroForm") == 0) {
        FakeDoc& doc = *reinterpret_cast<FakeDoc*>(dict);
        return doc.xfa ? reinterpret_cast<NdxObject>(&doc.xfa) : nullptr;
    }
    return std::strcmp(key, "XFA") == 0 ? dict : nullptr;
}

HostReader FakeBatchHost::HostReaderCreate() {
    ++liveReaders;
    return reinterpret_cast<HostReader>(static_cast<intptr_t>(++readerCount_));
}

int FakeBatchHost::HostReaderOpen(HostReader, const wchar_t* path, int) {
    return files.contains(path) && !unreadable.contains(path) ? 0 : 1;
}

HostSecurityHandler FakeBatchHost::HostSecurityHandlerCreate() {
    ++liveHandlers;
    return reinterpret_cast<HostSecurityHandler>(this);
}

int FakeBatchHost::HostSecurityHandlerCheck(HostSecurityHandler, NdxDoc doc, int) {
    return securityRefuses.contains(reinterpret_cast<FakeDoc*>(doc)->path) ? 1 : 0;
}

int FakeBatchHost::HostDocSaveAs(HostDoc doc, const wchar_t* path, int a, int b,
                                 const HostSaveAsOptions* options) {
    const bool expected = a == 0 && b == 0 && options != nullptr && options->flags == 1 &&
                          options->fullSave == 0 && options->reserved1 == 1 &&
                          options->reserved2 == 0;
    savedAs.emplace_back(Doc(doc).path, expected ? path : L"<unexpected options>");
    return 0;
}
