#include "open_documents.h"

#include "host/host_string.h"
#include "host/message_box_style.h"

std::vector<OpenDocument> OpenDocuments(HostApi& host) {
    std::vector<OpenDocument> documents;
    const int count = host.HostAppGetDocCount();
    for (int index = 0; index < count; ++index) {
        HostDoc doc = host.HostAppGetDocByIndex(index);
        if (doc == nullptr)
            continue;
        HostWide path(host);
        host.HostDocGetFilePath(doc, path);
        documents.push_back({doc, path.Text(), index});
    }
    return documents;
}

std::map<std::wstring, int> OpenDocumentsByPath(HostApi& host) {
    std::map<std::wstring, int> byPath;
    for (const OpenDocument& document : OpenDocuments(host))
        byPath.emplace(document.path, document.index);
    return byPath;
}

HostDoc FindOpenDocument(HostApi& host, const std::wstring& path) {
    const auto byPath = OpenDocumentsByPath(host);
    const auto found = byPath.find(path);
    return found != byPath.end() ? host.HostAppGetDocByIndex(found->second) : nullptr;
}

HostDoc OpenHidden(HostApi& host, const std::wstring& path) {
    HostOpenHiddenOptions options{};
    options.readOnly = 1;
    options.quiet = 1;
    options.password = L"";
    options.keepHidden = 1;
    return host.HostDocOpenHidden(path.c_str(), &options);
}

std::vector<std::wstring> FilesOfChosenDocuments(HostApi& host,
                                                 const std::vector<OpenDocument>& chosen,
                                                 const std::wstring& text,
                                                 const std::wstring& title, HostWindow parent) {
    std::vector<std::wstring> files;
    bool announced = false;
    for (const OpenDocument& document : chosen) {
        if (host.HostDocIsTemporary(document.doc) == 0 &&
            host.HostDocIsModified(document.doc) == 0) {
            files.push_back(document.path);
            continue;
        }
        if (!announced) {
            host.HostMessageBox(text.c_str(), message_box::kWarning, title.c_str(), nullptr,
                                parent);
            announced = true;
        }
        // The host's save; a temporary document gets its file there, so the path is read after.
        if (host.HostDocSave(document.doc, 0, 0, 1, 0) == 0)
            continue;
        HostWide path(host);
        host.HostDocGetFilePath(document.doc, path);
        if (!path.Text().empty())
            files.push_back(path.Text());
    }
    return files;
}
