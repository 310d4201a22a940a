#include "annot_dispatchers.h"

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/document_registry.h"
#include "logging/async_logger.h"
#include "redaction/annot_dictionaries.h"
#include "redaction/owned_handle.h"
#include "redaction/page_repaint.h"
#include "redaction/pdf_dict_writer.h"
#include "redaction/redaction_services.h"
#include "redaction/request_fields.h"
#include "redaction/search_result_store.h"
#include "util/utf.h"

namespace {

// What both commands name: a stored match and the kind of its annotation.
struct MatchRequest {
    std::wstring searchKey;
    int64_t index = 0;
    MatchAnnotKind kind = MatchAnnotKind::kHighlight;
};

// searchKey, index and type, checked in that order; 0 when they pass.
int32_t ReadMatchRequest(const Json::Value& root, MatchRequest& request) {
    request.searchKey = TextOf(Member(root, "searchKey"));
    if (request.searchKey.empty())
        return err::kNoSearchKey;
    const std::optional<int64_t> index = ListIndexOf(root);
    if (!index)
        return err::kNoIndex;
    request.index = *index;
    const std::wstring type = TextOf(Member(root, "type"));
    if (type.empty())
        return err::kNoType;
    if (type == L"highlight")
        request.kind = MatchAnnotKind::kHighlight;
    else if (type == L"redact")
        request.kind = MatchAnnotKind::kRedact;
    else
        return err::kWrongType;
    return err::kOk;
}

Json::Value MessageData(const char* message) {
    Json::Value data(Json::objectValue);
    data["message"] = message;
    return data;
}

}  // namespace

Json::Value AddAnnotDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    MatchRequest request;
    if (const int32_t code = ReadMatchRequest(root, request); code != err::kOk)
        return Fail(code);
    const Json::Value& contentsValue = Member(root, "contents");
    if (request.kind == MatchAnnotKind::kHighlight && contentsValue.isNull())
        return Fail(err::kNoContent);
    const std::wstring uniqueIDName = TextOf(Member(root, "uniqueIDName"));
    if (!StartsWith(uniqueIDName, kMatchAnnotPrefix))
        return Fail(err::kNoUniqueIdName);
    const CheckedDocument checked =
        CheckCurrentDocument(services_.documents, {.pdf = true, .fileId = true, .store = true});
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    HostApi& host = services_.host;
    NdxDoc pdf = checked.pdf;
    const std::wstring& fileId = checked.fileId;
    SearchResultStore* store = checked.store;
    const SearchRecord record = store->GetResult(fileId, request.searchKey, request.index);
    if (record.page == -1 || record.rects.empty())
        return Fail(err::kNoFindResult);
    if (store->IsAnnotated(record))
        return MakeResult(err::kOk, MessageData("the annot has been added"));

    const bool batch = services_.documents.batch().running;
    HostDocView view = nullptr;
    HostPageView pageView = nullptr;
    if (!batch) {
        view = host.HostDocGetView(doc);
        pageView = view != nullptr ? host.HostDocViewGetPageView(view, record.page) : nullptr;
        if (pageView == nullptr)
            return Fail(err::kNoDocView);
    }
    HostUndoManager undo = host.HostUndoGetManager();

    OwnedPdfObject dict(host, host.NDXDictNew());
    if (!dict)
        return Fail(err::kAddAnnotFailed);
    NdxObject pageDict = host.NDXDocGetPage(pdf, record.page);
    PdfDictWriter writer(host, pdf, dict.get());
    WriteMatchAnnot(writer, request.kind, record, pageDict, TextOf(contentsValue), uniqueIDName);

    HostAnnot annot = nullptr;
    if (batch) {
        if (auto failure =
                InsertWithoutView(doc, pdf, pageDict, dict.get(), record, uniqueIDName, annot)) {
            return *failure;
        }
    } else {
        annot = host.HostPageViewAddAnnot(pageView, dict.release(), -1);
    }
    if (annot == nullptr)
        return Fail(err::kAddAnnotFailed);
    if (!batch && undo != nullptr)
        host.HostUndoRecordAddAnnot(undo, annot, 1, 1);
    store->SetAnnot(record, uniqueIDName, annot);
    if (!batch)
        host.HostPageViewUpdateAnnot(pageView, annot);
    host.HostDocSetChanged(doc);
    return MakeResult(err::kOk, Json::Value());
}

std::optional<Json::Value> AddAnnotDispatcher::InsertWithoutView(HostDoc doc, NdxDoc pdf,
                                                                 NdxObject pageDict, NdxObject dict,
                                                                 const SearchRecord& record,
                                                                 const std::wstring& uniqueIDName,
                                                                 HostAnnot& annot) {
    HostApi& host = services_.host;
    OwnedPdfPage page(host, host.NDXPageNew());
    if (!page)
        return Fail(err::kAddAnnotFailed);
    host.NDXPageLoad(page.get(), pdf, pageDict, 0);
    host.NDXPageParse(page.get(), nullptr);
    if (host.NDXPageIsParsed(page.get()) == 0)
        return Fail(err::kAddAnnotFailed);
    HostPageView hostPage = host.HostDocGetPageView(doc, record.page);
    NdxAnnotList list = host.NDXAnnotListGet(page.get());
    NdxAnnot pdfAnnot = host.NDXAnnotNew(dict);
    const int before = list != nullptr ? host.NDXAnnotListCount(list) : 0;
    if (list != nullptr && pdfAnnot != nullptr)
        host.NDXAnnotListInsert(list, before, pdfAnnot);
    const int after = list != nullptr ? host.NDXAnnotListCount(list) : 0;
    if (after == before) {
        services_.logger.Log(kLogError, "Add annot size error :%", ToUtf8(uniqueIDName));
        return MakeResult(err::kAddAnnotFailed,
                          MessageData("after NDXAnnotListInsert, the AnnotList not change!"));
    }
    if (hostPage != nullptr)
        host.HostPageReloadAnnots(hostPage);
    host.HostDocRefreshPageAnnots(doc, record.page, 0);
    annot = reinterpret_cast<HostAnnot>(pdfAnnot);
    return std::nullopt;
}

Json::Value RemoveAnnotsDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    MatchRequest request;
    if (const int32_t code = ReadMatchRequest(root, request); code != err::kOk)
        return Fail(code);
    if (TextOf(Member(root, "uniqueIDPrefix")).empty())
        return Fail(err::kNoUniqueIdName);
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    HostApi& host = services_.host;
    HostDocView view = host.HostDocGetView(doc);
    if (view == nullptr)
        return Fail(err::kNoDocView);
    std::wstring fileId;
    if (!services_.documents.FileIdOf(doc, fileId))
        return Fail(err::kNoIdFromDoc);
    SearchResultStore* store = services_.documents.searchResults();
    if (store == nullptr)
        return Fail(err::kNoResultForSearchKey);
    const SearchRecord record = store->GetResult(fileId, request.searchKey, request.index);
    if (record.page == -1 || record.rects.empty())
        return Fail(err::kNoFindResult);
    HostAnnot annot = store->FindAnnot(record).annot;
    if (annot == nullptr)
        return Fail(err::kDeleteAnnotFailed);
    if (host.HostDocIsAnnotAlive(doc, annot) == 0) {
        store->ClearAnnotHandle(record);
        return Fail(err::kNoValidAnnot);
    }
    HostPageView pageView = host.HostDocViewGetPageView(view, record.page);
    if (pageView == nullptr)
        return Fail(err::kNoDocView);

    NdxAnnot pdfAnnot = host.NDXHostAnnotGetPdfAnnot(annot);
    NdxRect rect = pdfAnnot != nullptr ? host.NDXAnnotGetRect(pdfAnnot) : NdxRect{0, 0, 0, 0};
    if (HostUndoManager undo = host.HostUndoGetManager())
        host.HostUndoRecordDeleteAnnot(undo, annot, 1);
    host.HostDocTouchPage(doc, record.page);
    if (host.HostPageViewDeleteAnnot(pageView, annot) != 0)
        store->ClearAnnotHandle(record);
    host.NDXRectInflate(&rect, 0.5f, 0.5f, 0.5f, 0.5f);
    Repaint(host, view, ToDevice(host, pageView, rect));
    store->EraseAnnot(record);
    host.HostDocSetChanged(doc);
    return MakeResult(err::kOk, Json::Value());
}
