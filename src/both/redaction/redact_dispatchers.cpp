#include "redact_dispatchers.h"

#include <string>
#include <vector>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "host/host_string.h"
#include "host/message_box_style.h"
#include "logging/async_logger.h"
#include "redaction/owned_handle.h"
#include "redaction/pdf_text.h"
#include "redaction/redaction_services.h"
#include "redaction/redaction_strings.h"
#include "redaction/search_result_store.h"
#include "util/utf.h"

namespace {

constexpr uint32_t kBatchApplyOptions = 0x1000000;

// Asks the user to confirm; true for OK.
bool UserConfirms(HostApi& host, bool named) {
    const std::wstring text =
        ResourceString(named ? ids::kRedactNamedPrompt : ids::kRedactAllPrompt);
    const std::wstring title = ResourceString(ids::kPromptTitle);
    int checkState = 0;
    return host.HostMessageBox(text.c_str(), message_box::kOkCancel, title.c_str(), &checkState,
                               host.HostAppGetMainWindow()) == message_box::kOk;
}

}  // namespace

Json::Value RedactApplyDispatcher::Run() {
    const bool named = !params.empty();
    std::vector<std::wstring> names;
    if (named) {
        if (!params.parsed())
            return Fail(err::kNoJson);
        const Json::Value& root = params.value();
        const Json::Value& list = Member(root, "uniqueIDNames");
        if (!list.isArray() || list.empty())
            return Fail(err::kNoUniqueIdName);
        for (const Json::Value& name : list)
            names.push_back(TextOf(name));
    }
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    HostApi& host = services_.host;
    const bool batch = services_.documents.batch().running;
    HostDocView view = batch ? nullptr : host.HostDocGetView(doc);
    if (!batch && view == nullptr)
        return Fail(err::kNoDocView);
    SearchResultStore* store = services_.documents.searchResults();
    if (store == nullptr)
        return Fail(err::kNoResultForSearchKey);

    OwnedPtrArray annots(host, host.HostPtrArrayNew());
    if (!annots)
        return Fail(err::kRedactionFailed);
    Json::Value failed(Json::arrayValue);
    std::vector<std::wstring> failedNames;
    const auto fail = [&](const std::wstring& name) {
        failed.append(ToUtf8(name));
        failedNames.push_back(name);
    };
    services_.logger.Log(kLogInfo, "Start apply redact.");
    for (const std::wstring& name : names) {
        const int32_t page = store->GetPageIdxByAnnotUniqueID(name);
        if (page == -1) {
            services_.logger.Log(kLogError, "Brevan RedactApply  GetPageIdxByAnnotUniqueID error:%",
                                 ToUtf8(name));
            fail(name);
            continue;
        }
        HostAnnot annot = store->GetRecordAnnot(name);
        if (annot == nullptr) {
            services_.logger.Log(kLogError, "Brevan RedactApply  GetRecordAnnot error:%",
                                 ToUtf8(name));
            fail(name);
            continue;
        }
        if (!batch) {
            HostPageView pageView = host.HostDocViewGetPageView(view, page);
            if (pageView == nullptr || host.HostPageViewOwnsAnnot(pageView, annot) == 0) {
                fail(name);
                continue;
            }
        }
        host.HostPtrArrayAdd(annots.get(), annot);
    }
    const int collected = host.HostPtrArrayGetCount(annots.get());
    if (named && collected == 0)
        return Fail(err::kNoAnnotForRedaction);
    if (!batch && !UserConfirms(host, named))
        return Fail(err::kRedactionPromptCancel);
    if (HostTool hand = host.HostAppGetToolByName("Hand"))
        host.HostAppSetCurrentTool(hand, 1);

    int applied = 0;
    if (batch)
        applied = host.NDXRedactApplyBatch(doc, 1, kBatchApplyOptions);
    else if (named)
        applied = host.NDXRedactApplyList(doc, annots.get(), 1);
    else
        applied = host.NDXRedactApplyAll(doc, 1);
    if (applied == 0)
        return Fail(err::kRedactionFailed);

    // A name that could not be applied loses its record as well.
    for (int i = 0; i < collected; ++i) {
        const auto annot = static_cast<HostAnnot>(host.HostPtrArrayGetAt(annots.get(), i));
        store->EraseAnnot(store->FindRecordByAnnot(annot));
    }
    for (const std::wstring& name : failedNames) {
        store->EraseAnnot(store->FindRecordByUniqueID(name));
    }
    return MakeResult(err::kOk, failed);
}

Json::Value HasOtherRedactDispatcher::Run() {
    HostApi& host = services_.host;
    HostDoc doc = host.HostAppGetActiveDoc();
    if (doc == nullptr)
        return Fail(err::kClosedDoc);
    if (host.HostDocGetView(doc) == nullptr)
        return Fail(err::kNoDocView);
    NdxDoc pdf = host.HostDocGetPdfDoc(doc);
    if (pdf == nullptr)
        return Fail(err::kClosedDoc);
    SearchResultStore* store = services_.documents.searchResults();
    if (store == nullptr)
        return Fail(err::kNoResultForSearchKey);

    HostBytes redact(host);
    host.HostByteStringSet(redact, "Redact");
    const int pages = host.NDXDocGetPageCount(pdf);
    for (int page = 0; page < pages; ++page) {
        HostPageView pageView = host.HostDocGetPageView(doc, page);
        NdxPage pdfPage = pageView != nullptr ? host.HostPageViewGetPage(pageView) : nullptr;
        NdxAnnotList list = pdfPage != nullptr ? host.NDXAnnotListGet(pdfPage) : nullptr;
        if (list == nullptr)
            continue;
        const int count = host.NDXAnnotListCount(list);
        for (int i = 0; i < count; ++i) {
            NdxAnnot annot = host.NDXAnnotListGetAt(list, i);
            if (annot == nullptr)
                continue;
            HostBytes subtype(host);
            host.NDXAnnotGetSubtype(annot, subtype);
            if (host.HostByteStringEquals(subtype, redact) == 0)
                continue;
            HostBytes name(host);
            host.NDXDictGetString(host.NDXAnnotGetDict(annot), "NM", name);
            if (store->GetRecordAnnot(DecodePdfText(name.Bytes())) == nullptr)
                return MakeResult(err::kOk, Json::Value(true));
        }
    }
    return MakeResult(err::kOk, Json::Value(false));
}
