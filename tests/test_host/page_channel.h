// PageChannel: the page the test host offers as the extension table "pdfhost.pageChannel"
// (page_channel_abi.h). The run posts the page's messages through it; what the plug-in posts back
// and the scripts it runs are kept in order for the checks to take.
#pragma once

#include <deque>
#include <string>

#include "extension_registry.h"
#include "page_channel_abi.h"

namespace testhost {

class PageChannel {
  public:
    // Offers the table in `extensions`; the channel serves it while it lives.
    explicit PageChannel(pdfhost::ExtensionRegistry& extensions);
    ~PageChannel();
    PageChannel(const PageChannel&) = delete;
    PageChannel& operator=(const PageChannel&) = delete;

    bool Connected() const { return receiver_ != nullptr; }
    // The page posts `text`; false when no plug-in listens.
    bool Post(const std::string& text);

    // What the plug-in sent since the last take, oldest first.
    std::deque<std::string> TakeReplies() { return std::exchange(replies_, {}); }
    std::deque<std::string> TakeScripts() { return std::exchange(scripts_, {}); }

  private:
    static PageChannel* Current();
    static int BREVAN_HOSTCALL OnConnect(HostPageMessageFn receiver, void* client);
    static void BREVAN_HOSTCALL OnDisconnect(void* client);
    static void BREVAN_HOSTCALL OnPostMessage(const char* text, uint32_t size);
    static void BREVAN_HOSTCALL OnExecuteScript(const char* text, uint32_t size);

    HostPageMessageFn receiver_ = nullptr;
    void* client_ = nullptr;
    std::deque<std::string> replies_;
    std::deque<std::string> scripts_;
};

}  // namespace testhost
