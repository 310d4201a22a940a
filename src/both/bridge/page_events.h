// Events to the page: small objects that tell the page what happened in the editor. Each is made
// on the stack, sent once with Send and dropped. Send writes the event as compact JSON, hands it to
// the sink for the task pane's page (as the one argument of a call of window.__dispatchEvent) and
// logs it. Nothing comes back.
#pragma once

#include <json/value.h>

#include <string>

#include "bridge/page_event_sink.h"
#include "host/host_abi.h"

class BaseEvent {
  public:
    explicit BaseEvent(PageEventSink& sink) : sink_(sink) {}
    virtual ~BaseEvent() = default;
    BaseEvent(const BaseEvent&) = delete;
    BaseEvent& operator=(const BaseEvent&) = delete;

    // {"data": ..., "name": ...}; some events have no "data" key at all.
    virtual Json::Value ToJson() const = 0;

    // Delivers the event to the task pane's page of the host's current main window and logs it.
    void Send();

  private:
    PageEventSink& sink_;
};

// An event about one document, which the page knows by its registry id.
class BaseEventWithFileID : public BaseEvent {
  public:
    // The id the registry holds for the document, or else for its file path; empty when the
    // registry knows neither. The event never makes an id.
    BaseEventWithFileID(PageEventSink& sink, HostDoc doc);

    const std::wstring& fileId() const { return fileId_; }

  protected:
    // {"data": {"id": fileId}, "name": name}
    Json::Value IdEvent(const char* name) const;

  private:
    std::wstring fileId_;
};

// The host is about to open a document. "data" is null.
class DocBeforeOpenEvent : public BaseEvent {
  public:
    using BaseEvent::BaseEvent;
    Json::Value ToJson() const override;
};

class DocOpenSuccessEvent : public BaseEventWithFileID {
  public:
    using BaseEventWithFileID::BaseEventWithFileID;
    Json::Value ToJson() const override;
};

// openFile's download job failed. No "data" key.
class DocOpenFailedEvent : public BaseEvent {
  public:
    using BaseEvent::BaseEvent;
    Json::Value ToJson() const override;
};

// A PDF document's tab became the active one.
class DocActivateEvent : public BaseEventWithFileID {
  public:
    using BaseEventWithFileID::BaseEventWithFileID;
    Json::Value ToJson() const override;
};

// A tab that holds no PDF document became the active one: "ev-doc-activate" with id "0".
class OtherDocActivateEvent : public BaseEvent {
  public:
    using BaseEvent::BaseEvent;
    Json::Value ToJson() const override;
};

class DocModifiedEvent : public BaseEventWithFileID {
  public:
    using BaseEventWithFileID::BaseEventWithFileID;
    Json::Value ToJson() const override;
};

class DocSavedEvent : public BaseEventWithFileID {
  public:
    using BaseEventWithFileID::BaseEventWithFileID;
    Json::Value ToJson() const override;
};

class DocClosedEvent : public BaseEventWithFileID {
  public:
    using BaseEventWithFileID::BaseEventWithFileID;
    Json::Value ToJson() const override;
};

class DocFormFieldChangedEvent : public BaseEventWithFileID {
  public:
    DocFormFieldChangedEvent(PageEventSink& sink, HostDoc doc, std::wstring fieldName,
                             std::wstring value)
        : BaseEventWithFileID(sink, doc),
          fieldName_(std::move(fieldName)),
          value_(std::move(value)) {}
    Json::Value ToJson() const override;

  private:
    std::wstring fieldName_;
    std::wstring value_;
};

// The page shall show its account page ("my-plan") or its home page, as the sink says at the time
// the event is made.
class ChangePageEvent : public BaseEvent {
  public:
    explicit ChangePageEvent(PageEventSink& sink);
    Json::Value ToJson() const override;

  private:
    bool accountPage_;
};

// Nobody is signed in any more. No "data" key.
class UserSignOutEvent : public BaseEvent {
  public:
    using BaseEvent::BaseEvent;
    Json::Value ToJson() const override;
};
