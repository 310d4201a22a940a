#include "form_field_dispatchers.h"

#include <iterator>
#include <map>
#include <string>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/document_registry.h"
#include "document/document_services.h"
#include "host/host_string.h"
#include "redaction/search_result_store.h"
#include "util/utf.h"

const char* ControlTypeName(int type) {
    static constexpr const char* kNames[] = {"PushButton", "RadioButton", "CheckBox",
                                             "TextField",  "RichText",    "File",
                                             "ListBox",    "ComboBox",    "Sign"};
    return type >= kNdxControlPushButton && type <= kNdxControlSignature ? kNames[type - 1]
                                                                         : "Unknown";
}

Json::Value GetAllFormFieldsDispatcher::Run() {
    const CheckedDocument checked =
        CheckCurrentDocument(services_.documents, {.pdf = true, .fileId = true});
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    HostApi& host = services_.host;
    NdxDoc pdf = checked.pdf;
    const std::wstring& fileId = checked.fileId;
    HostFormEnv env = host.HostDocGetInterForm(doc);
    if (env == nullptr)
        return Fail(err::kNoDocView);
    NdxInterForm form = host.NDXInterFormFromEnvironment(env);
    if (form == nullptr)
        return Fail(err::kNoDocView);
    SearchResultStore* store = services_.documents.searchResults();
    if (store == nullptr)
        return Fail(err::kNoResultForSearchKey);

    // Every control of one field name shares the key of the first one met in this run.
    std::multimap<std::wstring, std::wstring> keysByName;
    Json::Value data(Json::arrayValue);
    const int pages = host.NDXDocGetPageCount(pdf);
    for (int page = 0; page < pages; ++page) {
        HostPageView pageView = host.HostDocGetPageView(doc, page);
        NdxPage pdfPage = pageView != nullptr ? host.HostPageViewGetPage(pageView) : nullptr;
        if (pdfPage == nullptr)
            continue;
        const int controls = host.NDXInterFormCountPageControls(form, pdfPage);
        for (int i = 0; i < controls; ++i) {
            NdxFormControl control = host.NDXInterFormGetPageControl(form, pdfPage, i);
            NdxFormField field =
                control != nullptr ? host.NDXFormControlGetField(control) : nullptr;
            if (field == nullptr)
                continue;
            const int type = host.NDXFormControlGetType(control);
            HostWide name(host);
            host.NDXFormFieldGetFullName(field, name);
            if (name.Text().empty())
                continue;
            HostWide value(host);
            if (type == kNdxControlTextField || type == kNdxControlRichText)
                host.NDXFormFieldGetValue(field, value);

            const auto [first, last] = keysByName.equal_range(name.Text());
            const auto before = std::distance(first, last);
            const std::wstring key = before == 0 ? NewGuidText() : first->second;
            keysByName.emplace(name.Text(), key);

            Json::Value entry(Json::objectValue);
            entry["name"] = ToUtf8(name.Text());
            entry["type"] = ControlTypeName(type);
            entry["value"] = ToUtf8(value.Text());
            entry["searchKey"] = ToUtf8(key);
            entry["index"] = static_cast<Json::Int64>(before);
            data.append(entry);

            SearchRecord record;
            record.page = page;
            record.index = i;
            NdxRect rect{0, 0, 0, 0};
            host.NDXFormControlGetRect(control, &rect);
            record.rects.push_back(rect);
            store->AppendResult(fileId, key, std::move(record));
        }
    }
    return MakeResult(err::kOk, data);
}

Json::Value SetFormFieldValueDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring fileId = FileIdOf(root);
    if (fileId.empty())
        return Fail(err::kNoId);
    const std::wstring fieldName = TextOf(Member(root, "fieldName"));
    if (fieldName.empty())
        return Fail(err::kNoFieldName);
    const Json::Value& value = Member(root, "value");
    if (value.isNull() || value.isArray() || value.isObject())
        return Fail(err::kNoFieldValue);
    HostDoc doc = nullptr;
    if (!services_.documents.DocOf(fileId, doc))
        return Fail(err::kNoDocFromField);
    HostApi& host = services_.host;
    HostFormEnv env = host.HostDocGetInterForm(doc);
    if (env == nullptr)
        return Fail(err::kNoFormObject);
    NdxInterForm form = host.NDXInterFormFromEnvironment(env);
    if (form == nullptr)
        return Fail(err::kNoInterForm);
    host.NDXInterFormSetUpdateAP(form, 1);
    NdxFormField field = host.NDXInterFormGetField(form, 0, fieldName.c_str());
    if (field == nullptr)
        return Fail(err::kNoSuchField);
    if (host.NDXFormFieldSetValue(field, TextOf(value).c_str(), 1) == 0)
        return Fail(err::kFieldValueRefused);
    host.HostDocSetChanged(doc);
    return MakeResult(err::kOk, Json::Value());
}
