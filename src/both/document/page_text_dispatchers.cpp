#include "page_text_dispatchers.h"

#include <cmath>
#include <optional>
#include <string>

#include "app/platform_services.h"
#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/document_services.h"
#include "document/flattened_copy.h"
#include "document/host_save_command.h"
#include "host/extension_tables.h"
#include "host/host_string.h"
#include "redaction/owned_handle.h"
#include "redaction/request_fields.h"
#include "util/utf.h"

namespace {

using OwnedStringArray = OwnedHandle<HostStringArray, &HostApi::HostStringArrayDestroy>;
using OwnedProgress = OwnedHandle<HostProgress, &HostApi::HostProgressDestroy>;

// The PDF page the editor shows for page `index` of `doc`, or null.
NdxPage PdfPageOf(HostApi& host, HostDoc doc, int index) {
    HostPageView view = host.HostDocGetPageView(doc, index);
    return view != nullptr ? host.HostPageViewGetPage(view) : nullptr;
}

bool PageHasTextField(HostApi& host, HostDoc doc, NdxInterForm form, int index) {
    NdxPage page = PdfPageOf(host, doc, index);
    if (page == nullptr)
        return false;
    const int controls = host.NDXInterFormCountPageControls(form, page);
    for (int i = 0; i < controls; ++i) {
        NdxFormControl control = host.NDXInterFormGetPageControl(form, page, i);
        if (control != nullptr && host.NDXFormControlGetType(control) == kNdxControlTextField)
            return true;
    }
    return false;
}

// Whether any page of `doc` holds a text field; the asked page is looked at first.
bool HasTextField(HostApi& host, HostDoc doc, int pageCount, std::optional<int> askedPage) {
    HostFormEnv env = host.HostDocGetInterForm(doc);
    NdxInterForm form = env != nullptr ? host.NDXInterFormFromEnvironment(env) : nullptr;
    if (form == nullptr)
        return false;
    if (askedPage && PageHasTextField(host, doc, form, *askedPage))
        return true;
    for (int index = 0; index < pageCount; ++index) {
        if (PageHasTextField(host, doc, form, index))
            return true;
    }
    return false;
}

// The text lines of a page joined by "\r\n"; an empty line adds nothing, not even a break.
std::wstring PageText(HostApi& host, NdxDoc pdf, int index) {
    const OwnedStringArray lines(host, host.HostStringArrayNew());
    host.NDXPageGetTextLines(lines.get(), pdf, host.NDXDocGetPage(pdf, index), 10, 15);
    const int count = host.HostStringArrayCount(lines.get());
    std::wstring text;
    for (int i = 0; i < count; ++i) {
        HostWide line(host);
        host.HostStringArrayGet(lines.get(), i, line);
        const std::wstring lineText = line.Text();
        text += lineText;
        if (i + 1 < count && !lineText.empty())
            text += L"\r\n";
    }
    return text;
}

Json::Value PageTexts(HostApi& host, NdxDoc pdf, int firstPage, int endPage) {
    Json::Value texts(Json::arrayValue);
    for (int index = firstPage; index < endPage; ++index)
        texts.append(ToUtf8(PageText(host, pdf, index)));
    return texts;
}

// The options record handed to the OCR extension, and what its dialog confirmed.
class OcrSettings {
  public:
    OcrSettings() : options_{language_.c_str(), 1} {}
    OcrSettings(const OcrSettings&) = delete;
    OcrSettings& operator=(const OcrSettings&) = delete;

    HostOcrOptions* options() { return &options_; }
    HostOcrDialogCallback callback() { return {this, &OcrSettings::OnConfirmed}; }
    bool confirmed = false;

  private:
    static void BREVAN_HOSTCALL OnConfirmed(void* client, const wchar_t* language, uint8_t flag) {
        auto& settings = *static_cast<OcrSettings*>(client);
        settings.language_ = language != nullptr ? language : L"";
        settings.options_ = {settings.language_.c_str(), flag};
        settings.confirmed = true;
    }

    std::wstring language_ = L"English";
    HostOcrOptions options_;
};

bool HasExtensionFunction(HostApi& host, HostExtTable table, int index) {
    return host.HostExtensionGetFunction(table, index) != nullptr;
}

// Runs the recognition page by page behind a progress window; the user's cancel stops it before
// the next page, and pages done stay done.
void RecognizePages(HostApi& host, HostDoc doc, NdxDoc pdf, HostExtTable ocr,
                    OcrSettings& settings) {
    const OwnedProgress progress(host, host.HostProgressNew(host.HostAppGetMainWindow(), 1));
    if (progress) {
        host.HostProgressSetText(progress.get(), L"Running OCR");
        host.HostProgressSetRange(progress.get(), 0, 100);
    }
    const int pages = host.NDXDocGetPageCount(pdf);
    for (int index = 0; index < pages; ++index) {
        if (progress) {
            const double share = static_cast<double>(index + 1) / pages * 100;
            host.HostProgressSetPos(progress.get(), static_cast<int>(std::lround(share)));
            host.HostProgressPump(progress.get());
            if (host.HostProgressIsCancelled(progress.get()) != 0) {
                host.HostProgressSetCancelled(progress.get(), 0);
                break;
            }
        }
        if (NdxPage page = PdfPageOf(host, doc, index))
            host.OcrRecognizePage(ocr, page, settings.options(), 0);
    }
}

}  // namespace

Json::Value GetFileTextsDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::optional<int64_t> pageIndex = JsonInteger(Member(root, "pageIndex"));
    if (!pageIndex)
        return Fail(err::kNoPageIndex);
    const CheckedDocument checked = CheckCurrentDocument(services_.documents, {.pdf = true});
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    HostApi& host = services_.host;
    NdxDoc pdf = checked.pdf;
    const int pageCount = host.NDXDocGetPageCount(pdf);
    std::optional<int> askedPage;
    if (*pageIndex != -1) {
        if (*pageIndex < 0 || *pageIndex >= pageCount)
            return Fail(err::kPageIndexOutOfRange);
        askedPage = static_cast<int>(*pageIndex);
    }
    const int firstPage = askedPage.value_or(0);
    const int endPage = askedPage ? *askedPage + 1 : pageCount;

    if (!HasTextField(host, doc, pageCount, askedPage))
        return MakeResult(err::kOk, PageTexts(host, pdf, firstPage, endPage));
    FlattenedCopy copy(services_);
    if (const int32_t failed = copy.Make(doc, firstPage, endPage); failed != err::kOk)
        return Fail(failed);
    return MakeResult(err::kOk, PageTexts(host, copy.pdf(), firstPage, endPage));
}

Json::Value RunFileOCRDispatcher::Run() {
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    HostApi& host = services_.host;
    if (FindExtensionTable(host, hostops::ExtTable::Ocr) == nullptr)
        return Fail(kNoOcrExtension);
    bool showDialog = false;
    if (params.parsed()) {
        const Json::Value& isShowDlg = Member(params.value(), "isShowDlg");
        if (!isShowDlg.isBool())
            return Fail(err::kNoJson);
        showDialog = isShowDlg.asBool();
    }

    using hostops::ExtOp;
    using hostops::ExtOpTraits;
    HostExtTable ocr = FindExtensionTable(host, hostops::ExtTable::Ocr);
    OcrSettings settings;
    settings.confirmed = !showDialog;
    if (showDialog && HasExtensionFunction(host, ocr, ExtOpTraits<ExtOp::OcrShowDialog>::index)) {
        HostOcrDialogCallback callback = settings.callback();
        host.OcrShowDialog(ocr, host.HostAppGetMainWindow(), settings.options(), &callback);
    }
    if (!settings.confirmed)
        return Fail(kNotRecognised);
    NdxDoc pdf = host.HostDocGetPdfDoc(doc);
    if (!HasExtensionFunction(host, ocr, ExtOpTraits<ExtOp::OcrRecognizePage>::index) ||
        pdf == nullptr) {
        return Fail(kNotRecognised);
    }
    RecognizePages(host, doc, pdf, ocr, settings);
    host.HostDocSetChanged(doc);
    services_.platform.SendWindowCommand(host.HostAppGetMainWindow(), kHostSaveCommand);
    return MakeResult(err::kOk, Json::Value());
}
