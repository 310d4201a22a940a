// Uploading a file through the bridge: the page pulls a 100 MB file with getFileStream in 1 MiB
// blocks, the plug-in's commands running against pdfhost's real tables (file reads, the host's
// base64 encoder, host strings, the JSON reply, the wide text of the web message). Beside it the
// floor: the same process reading the same file in the same blocks and base64-encoding them with
// OpenSSL's encoder, with nothing else.
#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "attached_plugin.h"  // tests/support
#include "bridge/web_message_channel.h"
#include "document/document_registry.h"
#include "host/hft_host_api.h"
#include "host_app.h"
#include "table_manager.h"
#include "util/utf.h"

namespace {

constexpr std::size_t kFileSize = 100u * 1000u * 1000u;
constexpr std::size_t kBlockSize = 1u << 20;

// The file streamed by both: random bytes, so that nothing compresses or repeats.
const std::filesystem::path& StreamedFile() {
    static const std::filesystem::path path = [] {
        const auto file = std::filesystem::temp_directory_path() / "file_stream_bench.bin";
        if (!std::filesystem::exists(file) || std::filesystem::file_size(file) != kFileSize) {
            std::mt19937_64 random(42);
            std::vector<uint64_t> block(kBlockSize / sizeof(uint64_t));
            std::ofstream out(file, std::ios::binary | std::ios::trunc);
            for (std::size_t written = 0; written < kFileSize; written += kBlockSize) {
                for (uint64_t& word : block)
                    word = random();
                out.write(reinterpret_cast<const char*>(block.data()),
                          static_cast<std::streamsize>(std::min(kBlockSize, kFileSize - written)));
            }
        }
        return file;
    }();
    return path;
}

// The page's side: keeps the last reply, as a page would before decoding it.
class LastReply : public PageEndpoint {
  public:
    void PostWebMessageAsString(const std::wstring& text) override { reply = text; }
    void ExecuteScript(const std::wstring&) override {}
    std::wstring reply;
};

void BM_GetFileStreamThroughBridge(benchmark::State& state) {
    pdfhost::HostApp host(pdfhost::HostOptions{});
    HftHostApi api(pdfhost::TableManager::Abi(), 0);
    AttachedPlugin plugin(api);
    if (plugin.app.Init() == 0) {
        state.SkipWithError("the plug-in did not start");
        return;
    }
    const std::wstring id = plugin.app.documents->newIdForPath(StreamedFile().wstring());
    plugin.app.documents->bindPath(id, StreamedFile().wstring());
    LastReply page;
    WebMessageChannel channel(plugin.app.commands(), page);
    const std::string release = R"(["base","releaseFileStream","","r"])";
    std::size_t replyBytes = 0;
    for (auto _ : state) {
        for (std::size_t offset = 0; offset < kFileSize; offset += kBlockSize) {
            const std::string request = R"(["base","getFileStream",{"file":{"id":")" + ToUtf8(id) +
                                        R"(","filePath":"upload"},"offset":)" +
                                        std::to_string(offset) + R"(,"blockSize":)" +
                                        std::to_string(kBlockSize) + R"(},"b"])";
            channel.OnWebMessage(request);
            replyBytes += page.reply.size();
        }
        channel.OnWebMessage(release);
    }
    if (page.reply.find(L"\"ret\":0") == std::wstring::npos)
        state.SkipWithError("the transfer failed");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileSize));
    state.counters["reply_chars_per_run"] =
        static_cast<double>(replyBytes) / static_cast<double>(state.iterations());
    plugin.app.Unload();
}

void BM_Floor_ReadAndBase64(benchmark::State& state) {
    std::vector<unsigned char> block(kBlockSize);
    std::string encoded(4 * ((kBlockSize + 2) / 3) + 1, '\0');
    for (auto _ : state) {
        std::ifstream in(StreamedFile(), std::ios::binary);
        while (in) {
            in.read(reinterpret_cast<char*>(block.data()),
                    static_cast<std::streamsize>(kBlockSize));
            const auto got = static_cast<int>(in.gcount());
            if (got == 0)
                break;
            const int written = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(encoded.data()),
                                                block.data(), got);
            benchmark::DoNotOptimize(written);
        }
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileSize));
}

}  // namespace

BENCHMARK(BM_Floor_ReadAndBase64)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_GetFileStreamThroughBridge)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_MAIN();
