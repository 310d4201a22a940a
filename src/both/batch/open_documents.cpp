#include "open_documents.h"

#include "host/host_string.h"

std::map<std::wstring, int> OpenDocumentsByPath(HostApi& host) {
    std::map<std::wstring, int> byPath;
    const int count = host.HostAppGetDocCount();
    for (int index = 0; index < count; ++index) {
        HostDoc doc = host.HostAppGetDocByIndex(index);
        if (doc == nullptr)
            continue;
        HostWide path(host);
        host.HostDocGetFilePath(doc, path);
        byPath.emplace(path.Text(), index);
    }
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
