#include "replace_text_dispatcher.h"

#include <cmath>
#include <limits>
#include <string>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/document_registry.h"
#include "redaction/redaction_services.h"
#include "redaction/request_fields.h"
#include "redaction/search_result_store.h"

std::optional<int64_t> TruncatedIndexOf(const Json::Value& value) {
    std::optional<int64_t> index = JsonInteger(value);
    if (!index && value.type() == Json::realValue) {
        const double number = std::trunc(value.asDouble());
        constexpr double kLimit = 9.2e18;  // below the largest 64-bit integer, exactly a double
        if (std::isnan(number))
            return std::nullopt;
        index = number >= kLimit    ? std::numeric_limits<int64_t>::max()
                : number <= -kLimit ? -1
                                    : static_cast<int64_t>(number);
    }
    if (!index || *index < 0)
        return std::nullopt;
    return index;
}

Json::Value ReplaceTextDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring searchKey = TextOf(Member(root, "searchKey"));
    if (searchKey.empty())
        return Fail(err::kNoSearchKey);
    const std::wstring text = TextOf(Member(root, "text"));
    if (text.empty())
        return Fail(err::kNoText);
    const std::optional<int64_t> index = TruncatedIndexOf(Member(root, "index"));
    if (!index)
        return Fail(err::kNoIndex);
    HostApi& host = services_.host;
    // The active document even during a batch run.
    const CheckedDocument checked = CheckDocument(services_.documents, host.HostAppGetActiveDoc(),
                                                  {.fileId = true, .store = true});
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    const SearchRecord record = checked.store->GetResult(checked.fileId, searchKey, *index);
    if (record.page == -1 || record.start == -1 || record.end == -1 || record.index == -1)
        return Fail(err::kNoFindResult);
    host.HostDocReplaceText(doc, record.page, record.index, text.c_str());
    host.HostDocSetChanged(doc);
    return MakeResult(err::kOk, Json::Value());
}
