#include "document_query_dispatchers.h"

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/doc_images_type.h"
#include "document/document_registry.h"
#include "document/document_services.h"
#include "document/file_descriptor.h"
#include "host/host_string.h"
#include "util/utf.h"
#include "util/wide_path.h"

Json::Value GetCurrentDocDispatcher::Run() {
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    DocumentRegistry& registry = *services_.documents.registry();
    std::wstring id;
    if (!registry.findIdByDoc(doc, id)) {
        id = NewGuidText();
        registry.bindDoc(id, doc);
        if (services_.host.HostDocIsTemporary(doc) == 0) {
            HostWide path(services_.host);
            services_.host.HostDocGetFilePath(doc, path);
            registry.bindPath(id, path.Text());
        }
    }
    std::wstring path;
    std::wstring aiFileId;
    registry.pathOf(id, path);
    registry.aiFileIdOf(id, aiFileId);

    FileDescriptor descriptor;
    descriptor.id = id;
    descriptor.aiFileId = aiFileId;
    descriptor.name = LastPathComponent(path);
    descriptor.size = FileSizeLow32(path);
    descriptor.isCurrentDoc = true;
    descriptor.filePath = path;
    Json::Value data(Json::arrayValue);
    data.append(descriptor.ToJson());
    return MakeResult(err::kOk, data);
}

Json::Value GetDocMetadataDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring id = FileIdOf(root);
    if (id.empty())
        return Fail(err::kNoId);
    HostDoc doc = nullptr;
    if (!services_.documents.DocOf(id, doc))
        return Fail(err::kClosedDoc);
    HostApi& host = services_.host;
    NdxDoc pdf = host.HostDocGetPdfDoc(doc);
    if (pdf == nullptr)
        return Fail(err::kNoNdxDoc);
    NdxObject info = host.NDXDocGetInfo(pdf);
    if (info == nullptr)
        return Fail(err::kNoInfoDict);

    Json::Value data(Json::objectValue);
    for (const char* key : {"CreationDate", "ModDate"}) {
        HostBytes value(host);
        host.NDXDictGetString(info, key, value);
        data[key] = value.Bytes();
    }
    return MakeResult(err::kOk, data);
}

Json::Value GetFileImagesTypeDispatcher::Run() {
    HostDoc doc = services_.host.HostAppGetActiveDoc();
    if (doc == nullptr)
        return Fail(err::kClosedDoc);
    Json::Value data(Json::objectValue);
    data["type"] = static_cast<int>(ClassifyDocImages(services_.host, doc));
    return MakeResult(err::kOk, data);
}
