// The base64 encoder that plug-ins use to hand file bytes to their pages.
#include <cstddef>

#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

HostBase64Encoder Base64EncoderNew(int paddingChar) {
    return Guarded<HostBase64Encoder>(nullptr, [&](HostApp& app) {
        return app.Values().base64Encoders.Emplace(static_cast<char>(paddingChar));
    });
}

void Base64EncoderDestroy(HostBase64Encoder encoder) {
    Guarded([&](HostApp& app) { app.Values().base64Encoders.Erase(encoder); });
}

// Replaces the byte string with the encoding; a negative size or no data encodes nothing.
void Base64Encode(HostBase64Encoder encoder, const void* data, int64_t size, HostByteString out) {
    Guarded([&](HostApp& app) {
        const Base64Encoder* found = app.Values().base64Encoders.Find(encoder);
        ByteStringValue* target = FindBytes(app, out);
        if (found == nullptr || target == nullptr)
            return;
        const bool empty = data == nullptr || size <= 0;
        found->EncodeInto(data, empty ? 0 : static_cast<std::size_t>(size), target->bytes);
    });
}

}  // namespace

void RegisterBase64Tables(TableManager& tables) {
    tables.Register<Op::HostBase64EncoderNew>(&Base64EncoderNew);
    tables.Register<Op::HostBase64EncoderDestroy>(&Base64EncoderDestroy);
    tables.Register<Op::HostBase64Encode>(&Base64Encode);
}

}  // namespace pdfhost
