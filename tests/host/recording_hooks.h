// A document event record for host tests that writes down every hook call.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host_test_support.h"
#include "wide_text.h"

namespace pdfhost::testing {

class RecordingHooks {
  public:
    RecordingHooks() {
        record_.setWord(kDocEventClientData, this);
        Set(kDocEventWillOpen, [](void* self) { Add(self, "will-open"); });
        Set(kDocEventDidOpen, [](void* self, HostDoc doc) { Add(self, "did-open", doc); });
        Set(kDocEventActivate, [](void* self, HostDoc doc) { Add(self, "activate", doc); });
        Set(kDocEventDidSave, [](void* self, HostDoc doc, int result) {
            Add(self, "did-save", doc, " " + std::to_string(result));
        });
        Set(kDocEventClosing, [](void* self, HostDoc doc) { Add(self, "closing", doc); });
        Set(kDocEventModified, [](void* self, HostDoc doc) { Add(self, "modified", doc); });
        Set(kDocEventOtherTab, [](void* self) { Add(self, "other-tab"); });
        Set(kDocEventFieldChanged, [](void* self, HostDoc, NdxFormField field) {
            Add(self, "field " + FieldText<NDXFormFieldGetFullName>(field) + "=" +
                          FieldText<NDXFormFieldGetValue>(field));
        });
    }

    HostDocEventRecord* Record() { return &record_; }
    // The calls so far, then forgets them: "did-open 1" names the document by its number, a
    // changed field comes as "field <full name>=<value>".
    std::vector<std::string> Take() { return std::exchange(calls_, {}); }
    // Runs once, inside the next hook call.
    std::function<void()> duringNextHook;

    // A form field's full name or value read through the tables, over what the string held.
    template <hostops::Op op>
    static std::string FieldText(NdxFormField field) {
        return Utf8Of(ReadWide([&](HostWideString out) { Call<op>(field, out); }, L"left over"));
    }

  private:
    template <typename Hook>
    void Set(std::size_t key, Hook hook) {
        SetHook(record_, key, hook);
    }
    static void Add(void* self, std::string call, HostDoc doc, std::string tail = "") {
        const HostDocument* document = HostApp::Current()->Documents().Find(doc);
        Add(self,
            call + " " + (document != nullptr ? std::to_string(document->Number()) : "?") + tail);
    }
    static void Add(void* self, std::string call) {
        auto& hooks = *static_cast<RecordingHooks*>(self);
        hooks.calls_.push_back(std::move(call));
        if (auto action = std::exchange(hooks.duringNextHook, nullptr))
            action();
    }

    HostDocEventRecord record_;
    std::vector<std::string> calls_;
};

}  // namespace pdfhost::testing
