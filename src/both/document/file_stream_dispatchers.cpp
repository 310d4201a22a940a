#include "file_stream_dispatchers.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string_view>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "bridge/json_text.h"
#include "bridge/wide_reply.h"
#include "document/document_registry.h"
#include "document/document_services.h"
#include "document/file_descriptor.h"
#include "document/progress_bar_host.h"
#include "host/host_string.h"
#include "redaction/owned_handle.h"
#include "redaction/request_fields.h"
#include "util/utf.h"
#include "util/wide_path.h"

namespace {

using OwnedBase64Encoder = OwnedHandle<HostBase64Encoder, &HostApi::HostBase64EncoderDestroy>;

// A JSON integer within the signed 32-bit range.
std::optional<int32_t> Int32Of(const Json::Value& value) {
    const std::optional<int64_t> number = JsonInteger(value);
    if (!number || *number < std::numeric_limits<int32_t>::min() ||
        *number > std::numeric_limits<int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<int32_t>(*number);
}

// Where the bar stands after a block: full at the end of the file, else the share of the file up
// to the end of the block.
int BarPosition(int32_t offset, int32_t blockSize, int32_t fileSize, bool isEnd) {
    if (isEnd)
        return 100;
    if (fileSize <= 0)
        return 0;
    const int64_t share = (int64_t{offset} + blockSize) * 100 / fileSize;
    return static_cast<int>(std::clamp<int64_t>(share, 0, 100));
}

// The file to read for `id`: that of its open document, saved first when it has changes, or the
// path the registry holds for a file that is not open.
enum class Source { kFound, kNoPath, kSaveFailed };
Source FileOf(const DocumentServices& services, const std::wstring& id, std::wstring& path) {
    HostDoc doc = nullptr;
    if (!services.documents.DocOf(id, doc))
        return services.documents.registry() && services.documents.registry()->pathOf(id, path)
                   ? Source::kFound
                   : Source::kNoPath;
    HostApi& host = services.host;
    const bool save = host.HostDocIsModified(doc) != 0;
    if (save) {
        services.temporarySave.Start(host.HostDocIsTemporary(doc) != 0);
        if (host.HostDocSave(doc, 0, 0, 1, 0) == 0)
            return Source::kSaveFailed;
    }
    HostWide hostPath(host);
    host.HostDocGetFilePath(doc, hostPath);
    path = hostPath.Text();
    if (save)
        services.documents.registry()->bindPath(id, path);
    return Source::kFound;
}

// The base64 text the host's encoder wrote.
std::string_view ContentOf(HostApi& host, HostByteString encoded) {
    const char* bytes = host.HostByteStringData(encoded);
    const int size = host.HostByteStringGetLength(encoded);
    return bytes != nullptr && size > 0 ? std::string_view(bytes, static_cast<std::size_t>(size))
                                        : std::string_view();
}

}  // namespace

Json::Value EmptyTextReply() {
    Json::Value reply(Json::objectValue);
    reply["data"] = "";
    reply["ret"] = err::kOk;
    return reply;
}

char* GetFileStreamDispatcher::BlockBuffer(std::size_t size) {
    if (stream_.blockCapacity < size) {
        stream_.block.reset();
        stream_.blockCapacity = 0;
        try {
            stream_.block = std::make_unique_for_overwrite<char[]>(size);
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
        stream_.blockCapacity = size;
    }
    return stream_.block.get();
}

Json::Value GetFileStreamDispatcher::Serve(HostBytes& encoded) {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const Json::Value& file = Member(root, "file");
    const std::wstring id = TextOf(Member(file, "id"));
    if (id.empty() || TextOf(Member(file, "filePath")).empty())
        return Fail(err::kNoId);
    const std::optional<int32_t> offset = Int32Of(Member(root, "offset"));
    if (!offset)
        return Fail(err::kNoOffset);
    const std::optional<int32_t> blockSize = Int32Of(Member(root, "blockSize"));
    if (!blockSize || *blockSize > kLargestBlock)
        return Fail(err::kNoBlockSize);

    std::wstring path;
    switch (FileOf(services_, id, path)) {
        case Source::kNoPath:
            return Fail(err::kNoPath);
        case Source::kSaveFailed:
            return Fail(err::kSavingDocFailed);
        case Source::kFound:
            break;
    }

    // An open stream stays bound to its file until the page releases it, whatever id comes.
    std::ifstream& in = stream_.file;
    if (!in.is_open()) {
        in.open(PathOfWide(path), std::ios::binary);
        if (!in.is_open())
            return Fail(err::kOpenStreamFailed);
        in.clear();
        stream_.path = path;
        if (services_.progressBar)
            services_.progressBar->showFixed(ProgressBarHost::kUploadBar);
    }
    // A stream that ran into the end of its file stays failed: only a release brings it back.
    in.seekg(*offset, std::ios::beg);
    if (in.fail())
        return Fail(err::kOffsetSeekFailed);

    const char* block = nullptr;
    int32_t dataSize = 0;
    if (*blockSize > 0) {
        char* buffer = BlockBuffer(static_cast<std::size_t>(*blockSize));
        if (buffer == nullptr)
            return Fail(err::kNoBlockSize);
        in.read(buffer, *blockSize);
        block = buffer;
        dataSize = static_cast<int32_t>(in.gcount());
    }
    const bool isEnd = in.eof();
    const auto fileSize = static_cast<int32_t>(FileSizeLow32(path));
    if (services_.progressBar)
        services_.progressBar->update(BarPosition(*offset, *blockSize, fileSize, isEnd), L"");

    HostApi& host = services_.host;
    const OwnedBase64Encoder encoder(host, host.HostBase64EncoderNew('='));
    host.HostBase64Encode(encoder.get(), block, dataSize, encoded);

    Json::Value data(Json::objectValue);
    data["content"] = "";
    data["dataSize"] = dataSize;
    data["isEnd"] = isEnd;
    data["fileSize"] = fileSize;
    data["name"] = ToUtf8(LastPathComponent(path));
    data["filePath"] = ToUtf8(path);
    data["id"] = ToUtf8(id);
    return MakeResult(err::kOk, data);
}

Json::Value GetFileStreamDispatcher::Run() {
    HostBytes encoded(services_.host);
    Json::Value reply = Serve(encoded);
    const std::string_view content = ContentOf(services_.host, encoded);
    if (!content.empty())
        reply["data"]["content"] = Json::Value(content.data(), content.data() + content.size());
    return reply;
}

template <typename Use>
auto GetFileStreamDispatcher::WithReplyPieces(Use use) {
    HostBytes encoded(services_.host);
    const std::string text = WriteJson(Serve(encoded));
    // The writer puts keys in order, so a block's reply opens with its empty content.
    static constexpr std::string_view kOpening = R"({"data":{"content":")";
    const std::string_view content = ContentOf(services_.host, encoded);
    if (content.empty() || !text.starts_with(kOpening))
        return use({std::string_view(text)});
    return use({kOpening, content, std::string_view(text).substr(kOpening.size())});
}

std::string GetFileStreamDispatcher::ReplyText() {
    return WithReplyPieces([](std::initializer_list<std::string_view> pieces) {
        std::string joined;
        for (std::string_view piece : pieces)
            joined.append(piece);
        return joined;
    });
}

std::wstring GetFileStreamDispatcher::WideReplyText() {
    return WithReplyPieces(&WidenReply);
}

Json::Value ReleaseFileStreamDispatcher::Run() {
    if (stream_.file.is_open())
        stream_.file.close();
    stream_.path.clear();
    stream_.block.reset();
    stream_.blockCapacity = 0;
    if (services_.progressBar)
        services_.progressBar->close();
    return EmptyTextReply();
}
