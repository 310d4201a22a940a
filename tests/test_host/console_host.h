// ConsoleHost: the test host's editor, FakeHost with what a running editor does beyond it. It
// offers the page channel "pdfhost.pageChannel" (page_channel_abi.h) to one receiver at a time and
// keeps what the plug-in posts back, runs the will-open hooks before a document opens and the
// modified hooks when a document first changes, and offers every function of its "login" table.
#pragma once

#include <json/json.h>

#include <optional>
#include <string>
#include <vector>

#include "fake_host.h"

namespace testhost {

// Compact JSON text of a value.
std::string JsonText(const Json::Value& value);
// The value of a JSON text, or nothing when it does not parse.
std::optional<Json::Value> ParseJson(const std::string& text);

class ConsoleHost : public FakeHost {
  public:
    // Opens a document as the editor does: the will-open hooks run first.
    HostDoc OpenDocument(FakeDoc doc);

    bool Connected() const { return receiver_ != nullptr; }
    // The page posts `text`; gives every reply it caused, oldest first.
    std::vector<std::string> Exchange(const std::string& text);
    // The events the plug-in ran in the page (" window.__dispatchEvent({...});") since the last
    // call, in order.
    std::vector<Json::Value> TakeEvents();

    void HostDocSetChanged(HostDoc doc) override;
    HostExtTable HostExtensionFind(const char* name, int version) override;
    HostFunction HostExtensionGetFunction(HostExtTable table, int index) override;
    int PageChannelConnect(HostExtTable, HostPageMessageFn receiver, void* client) override;
    void PageChannelDisconnect(HostExtTable, void* client) override;
    void PageChannelPostMessage(HostExtTable, const char* text, uint32_t size) override {
        replies_.emplace_back(text, size);
    }
    void PageChannelExecuteScript(HostExtTable, const char* text, uint32_t size) override {
        scripts_.emplace_back(text, size);
    }

  private:
    HostExtTable Channel() { return reinterpret_cast<HostExtTable>(&channel_); }

    int channel_ = 0;
    HostPageMessageFn receiver_ = nullptr;
    void* client_ = nullptr;
    std::vector<std::string> replies_;
    std::vector<std::string> scripts_;
};

}  // namespace testhost
