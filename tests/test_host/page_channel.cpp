#include "page_channel.h"

#include <utility>

namespace testhost {
namespace {

PageChannel* g_channel = nullptr;

std::string TextOf(const char* text, uint32_t size) {
    return text != nullptr ? std::string(text, size) : std::string();
}

}  // namespace

PageChannel::PageChannel(pdfhost::ExtensionRegistry& extensions) {
    using hostops::ExtOp;
    extensions.Register<ExtOp::PageChannelConnect>(&PageChannel::OnConnect);
    extensions.Register<ExtOp::PageChannelDisconnect>(&PageChannel::OnDisconnect);
    extensions.Register<ExtOp::PageChannelPostMessage>(&PageChannel::OnPostMessage);
    extensions.Register<ExtOp::PageChannelExecuteScript>(&PageChannel::OnExecuteScript);
    g_channel = this;
}

PageChannel::~PageChannel() {
    if (g_channel == this)
        g_channel = nullptr;
}

PageChannel* PageChannel::Current() {
    return g_channel;
}

bool PageChannel::Post(const std::string& text) {
    if (receiver_ == nullptr)
        return false;
    receiver_(client_, text.data(), static_cast<uint32_t>(text.size()));
    return true;
}

// One receiver at a time: a second plug-in is refused while the first listens.
int BREVAN_HOSTCALL PageChannel::OnConnect(HostPageMessageFn receiver, void* client) {
    PageChannel* self = Current();
    if (self == nullptr || receiver == nullptr || self->receiver_ != nullptr)
        return 0;
    self->receiver_ = receiver;
    self->client_ = client;
    return 1;
}

void BREVAN_HOSTCALL PageChannel::OnDisconnect(void* client) {
    PageChannel* self = Current();
    if (self == nullptr || self->client_ != client)
        return;
    self->receiver_ = nullptr;
    self->client_ = nullptr;
}

void BREVAN_HOSTCALL PageChannel::OnPostMessage(const char* text, uint32_t size) {
    if (PageChannel* self = Current())
        self->replies_.push_back(TextOf(text, size));
}

void BREVAN_HOSTCALL PageChannel::OnExecuteScript(const char* text, uint32_t size) {
    if (PageChannel* self = Current())
        self->scripts_.push_back(TextOf(text, size));
}

}  // namespace testhost
