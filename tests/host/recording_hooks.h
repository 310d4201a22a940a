// A document event record for host tests that writes down every hook call.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host_app.h"

namespace pdfhost::testing {

class RecordingHooks {
  public:
    RecordingHooks() {
        record_.setWord(kDocEventClientData, this);
        record_.setWord(kDocEventWillOpen, reinterpret_cast<void*>(&WillOpen));
        record_.setWord(kDocEventDidOpen, reinterpret_cast<void*>(&DidOpen));
        record_.setWord(kDocEventActivate, reinterpret_cast<void*>(&Activate));
        record_.setWord(kDocEventDidSave, reinterpret_cast<void*>(&DidSave));
        record_.setWord(kDocEventClosing, reinterpret_cast<void*>(&Closing));
        record_.setWord(kDocEventModified, reinterpret_cast<void*>(&Modified));
        record_.setWord(kDocEventOtherTab, reinterpret_cast<void*>(&OtherTab));
    }

    HostDocEventRecord* Record() { return &record_; }
    // The calls so far, then forgets them: "did-open 1" names the document by its number.
    std::vector<std::string> Take() { return std::exchange(calls_, {}); }
    // Runs once, inside the next hook call.
    std::function<void()> duringNextHook;

  private:
    static RecordingHooks& Self(void* client) { return *static_cast<RecordingHooks*>(client); }
    static std::string Number(HostDoc doc) {
        const HostDocument* document = HostApp::Current()->Documents().Find(doc);
        return document != nullptr ? std::to_string(document->Number()) : "?";
    }
    void Add(std::string call) {
        calls_.push_back(std::move(call));
        if (auto action = std::exchange(duringNextHook, nullptr))
            action();
    }
    static void WillOpen(void* client) { Self(client).Add("will-open"); }
    static void DidOpen(void* client, HostDoc doc) { Self(client).Add("did-open " + Number(doc)); }
    static void Activate(void* client, HostDoc doc) { Self(client).Add("activate " + Number(doc)); }
    static void DidSave(void* client, HostDoc doc, int result) {
        Self(client).Add("did-save " + Number(doc) + " " + std::to_string(result));
    }
    static void Closing(void* client, HostDoc doc) { Self(client).Add("closing " + Number(doc)); }
    static void Modified(void* client, HostDoc doc) { Self(client).Add("modified " + Number(doc)); }
    static void OtherTab(void* client) { Self(client).Add("other-tab"); }

    HostDocEventRecord record_;
    std::vector<std::string> calls_;
};

}  // namespace pdfhost::testing
