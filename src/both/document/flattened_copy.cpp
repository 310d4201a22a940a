#include "flattened_copy.h"

#include "app/platform_services.h"
#include "bridge/error_codes.h"
#include "document/document_services.h"
#include "host/host_string.h"
#include "util/confined_files.h"
#include "util/wide_path.h"

namespace fs = std::filesystem;

namespace {

// Read-only and quiet, kept hidden.
HostOpenHiddenOptions HiddenCopyOptions() {
    HostOpenHiddenOptions options{};
    options.readOnly = 1;
    options.quiet = 1;
    options.password = L"";
    options.keepHidden = 1;
    return options;
}

}  // namespace

FlattenedCopy::~FlattenedCopy() {
    if (copy_ != nullptr)
        services_.host.HostDocClose(copy_, 0, 0, 0);
    if (!scratch_.empty())
        RemoveInside(scratch_.parent_path(), scratch_, false);
    if (copy_ != nullptr && !services_.documents.batch().running)
        services_.showTaskPane(true);
}

bool FlattenedCopy::CopyFile(const fs::path& from, fs::path to) {
    std::error_code error;
    if (from.empty() || !fs::exists(from, error))
        return false;
    // A document that lives in the temporary folder itself gets a copy of another name, so the
    // clean-up never deletes the user's own file.
    if (fs::exists(to, error) && fs::equivalent(from, to, error))
        to.replace_filename(fs::path("text-of-") += to.filename());
    if (!RemoveInside(to.parent_path(), to, false) || !fs::copy_file(from, to, error))
        return false;
    scratch_ = to;
    fs::permissions(to, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add,
                    error);
    return true;
}

int32_t FlattenedCopy::Make(HostDoc source, int firstPage, int endPage) {
    HostApi& host = services_.host;
    HostWide sourcePath(host);
    host.HostDocGetFilePath(source, sourcePath);
    HostWide fileName(host);
    host.HostDocGetFileName(source, fileName);
    if (!IsPlainFileName(fileName.Text()) ||
        !CopyFile(PathOfWide(sourcePath.Text()),
                  PathOfWide(services_.platform.TempFolder()) / PathOfWide(fileName.Text())))
        return err::kClosedDoc;

    const std::wstring scratch = WideOfPath(scratch_);
    const HostOpenHiddenOptions options = HiddenCopyOptions();
    copy_ = host.HostDocOpenHidden(scratch.c_str(), &options);
    if (copy_ == nullptr)
        return err::kClosedDoc;
    pdf_ = host.HostDocGetPdfDoc(copy_);
    if (pdf_ == nullptr)
        return err::kNoNdxDoc;
    NdxFlattener flattener = host.NDXFlattenerNew(pdf_);
    if (flattener == nullptr)
        return err::kClosedDoc;
    for (int index = firstPage; index < endPage; ++index) {
        HostPageView view = host.HostDocGetPageView(copy_, index);
        NdxPage page = view != nullptr ? host.HostPageViewGetPage(view) : nullptr;
        if (page != nullptr)
            host.NDXFlattenerAddPage(flattener, page, 1, 0);
    }
    host.NDXFlattenerDone(flattener);
    host.NDXDocSaveToFile(pdf_, Utf8OfPath(scratch_).c_str(), 0, 1);
    return err::kOk;
}
