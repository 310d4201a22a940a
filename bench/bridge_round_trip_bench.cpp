// The cost of one bridge round trip — envelope text in, reply text out — beside its floor: the
// JSON library parsing the same envelope and writing the same reply, with nothing else.
#include <benchmark/benchmark.h>

#include "attached_plugin.h"  // tests/support
#include "bridge/json_text.h"
#include "bridge/web_message_channel.h"
#include "host_api_defaults.h"

namespace {

constexpr const char* kModifiedEnvelope =
    R"(["base","isCurrentDocModified",{"file":{"id":"{4C1F2A3B-6D5E-4F70-8A9B-0C1D2E3F4A5B}"}},"7f3c9a2e-request-0001"])";
constexpr const char* kUnknownEnvelope =
    R"(["base","noSuchCommand",{"file":{"id":"{4C1F2A3B-6D5E-4F70-8A9B-0C1D2E3F4A5B}"}},"7f3c9a2e-request-0001"])";

// A host with one open, unmodified document.
class OneDocumentHost : public HostApiDefaults {
  public:
    HostDoc HostAppGetActiveDoc() override { return reinterpret_cast<HostDoc>(this); }
    int HostDocIsModified(HostDoc) override { return 0; }
};

class LastReply : public PageEndpoint {
  public:
    void PostWebMessageAsString(const std::wstring& text) override { reply = text; }
    void ExecuteScript(const std::wstring&) override {}
    std::wstring reply;
};

void RoundTrip(benchmark::State& state, const char* envelope) {
    OneDocumentHost host;
    AttachedPlugin plugin(host);
    LastReply endpoint;
    WebMessageChannel channel(plugin.app.commands(), endpoint);
    for (auto _ : state) {
        channel.OnWebMessage(envelope);
        benchmark::DoNotOptimize(endpoint.reply.data());
    }
}

void Floor(benchmark::State& state, const char* envelope, const Json::Value& reply) {
    for (auto _ : state) {
        Json::Value parsed;
        ParseJson(envelope, parsed);
        std::string text = WriteJson(reply);
        benchmark::DoNotOptimize(parsed);
        benchmark::DoNotOptimize(text.data());
    }
}

void BM_RoundTrip_IsCurrentDocModified(benchmark::State& state) {
    RoundTrip(state, kModifiedEnvelope);
}
void BM_RoundTrip_UnknownCommand(benchmark::State& state) {
    RoundTrip(state, kUnknownEnvelope);
}

void BM_Floor_IsCurrentDocModified(benchmark::State& state) {
    Json::Value reply(Json::objectValue);
    reply["data"] = false;
    reply["ret"] = 0;
    reply["uuid"] = "7f3c9a2e-request-0001";
    Floor(state, kModifiedEnvelope, reply);
}
void BM_Floor_UnknownCommand(benchmark::State& state) {
    Json::Value reply(Json::objectValue);
    reply["data"] = Json::Value();
    reply["ret"] = 400000;
    Floor(state, kUnknownEnvelope, reply);
}

BENCHMARK(BM_Floor_IsCurrentDocModified);
BENCHMARK(BM_RoundTrip_IsCurrentDocModified);
BENCHMARK(BM_Floor_UnknownCommand);
BENCHMARK(BM_RoundTrip_UnknownCommand);

}  // namespace

BENCHMARK_MAIN();
