#include "file_check.h"

#include <filesystem>
#include <system_error>

#include "batch/open_documents.h"
#include "util/wide_path.h"

namespace {

// Closes a document the check opened, however the check ends.
class OpenedForCheck {
  public:
    OpenedForCheck(HostApi& host, HostDoc doc) : host_(host), doc_(doc) {}
    ~OpenedForCheck() {
        if (doc_ != nullptr)
            host_.HostDocClose(doc_, 0, 0, 0);
    }
    OpenedForCheck(const OpenedForCheck&) = delete;
    OpenedForCheck& operator=(const OpenedForCheck&) = delete;

  private:
    HostApi& host_;
    HostDoc doc_;
};

// A catalogue whose form dictionary has an XFA entry.
bool HasXfaForm(HostApi& host, HostDoc doc) {
    NdxDoc pdf = host.HostDocGetPdfDoc(doc);
    NdxObject root = pdf != nullptr ? host.NDXDocGetRoot(pdf) : nullptr;
    NdxObject form = root != nullptr ? host.NDXDictGet(root, "AcroForm") : nullptr;
    return form != nullptr && host.NDXDictGet(form, "XFA") != nullptr;
}

// The security handler's own answer for a document opened for the check: non-zero refuses
// changes.
bool SecurityRefusesChanges(HostApi& host, HostDoc doc) {
    HostSecurityHandler handler = host.HostSecurityHandlerCreate();
    if (handler == nullptr)
        return false;
    const int refused =
        host.HostSecurityHandlerCheck(handler, host.HostDocGetPdfDoc(doc), kHostPermModify);
    host.HostSecurityHandlerDestroy(handler);
    return refused != 0;
}

int64_t SizeOf(const std::wstring& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(PathOfWide(path), error);
    return error ? 0 : static_cast<int64_t>(size);
}

}  // namespace

FileCheck CheckBatchFile(HostApi& host, const std::wstring& path) {
    FileCheck check;
    HostDoc doc = FindOpenDocument(host, path);
    const bool openedHere = doc == nullptr;
    if (openedHere)
        doc = OpenHidden(host, path);
    if (doc == nullptr) {
        check.errorKey = kParseErrorKey;
        return check;
    }
    const OpenedForCheck closer(host, openedHere ? doc : nullptr);
    if (HasXfaForm(host, doc)) {
        check.errorKey = kXfaErrorKey;
        return check;
    }
    const bool copyAllowed = host.HostDocGetPermission(doc, kHostPermCopy) != 0;
    bool changeAllowed = host.HostDocGetPermission(doc, kHostPermModify) != 0;
    if (changeAllowed && openedHere && SecurityRefusesChanges(host, doc))
        changeAllowed = false;
    if (!copyAllowed || !changeAllowed) {
        check.errorKey = kPermissionErrorKey;
        return check;
    }
    check.fileSize = SizeOf(path);
    check.pageCount = host.HostDocGetPageCount(doc);
    return check;
}
