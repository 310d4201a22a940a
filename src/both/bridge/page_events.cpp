#include "page_events.h"

#include <vector>

#include "bridge/json_text.h"
#include "logging/async_logger.h"
#include "util/utf.h"

namespace {

Json::Value Named(const char* name) {
    Json::Value event(Json::objectValue);
    event["name"] = name;
    return event;
}

Json::Value NamedWithData(const char* name, const Json::Value& data) {
    Json::Value event = Named(name);
    event["data"] = data;
    return event;
}

}  // namespace

void BaseEvent::Send() {
    const Json::Value event = ToJson();
    const std::vector<std::wstring> arguments{FromUtf8(WriteJson(event))};
    sink_.SendToTaskPane(L"__dispatchEvent", arguments);
    AsyncLogger& logger = AsyncLogger::Instance();
    if (logger.Enabled(kLogInfo))
        logger.Log(kLogInfo, "Brevan Event:  %", WriteStyledJson(event));
}

BaseEventWithFileID::BaseEventWithFileID(PageEventSink& sink, HostDoc doc)
    : BaseEvent(sink), fileId_(sink.EventFileIdOf(doc)) {}

Json::Value BaseEventWithFileID::IdEvent(const char* name) const {
    Json::Value data(Json::objectValue);
    data["id"] = ToUtf8(fileId_);
    return NamedWithData(name, data);
}

Json::Value DocBeforeOpenEvent::ToJson() const {
    return NamedWithData("ev-doc-before-open", Json::Value());
}

Json::Value DocOpenSuccessEvent::ToJson() const {
    return IdEvent("ev-doc-open-success");
}

Json::Value DocOpenFailedEvent::ToJson() const {
    return Named("ev-doc-open-failed");
}

Json::Value DocActivateEvent::ToJson() const {
    return IdEvent("ev-doc-activate");
}

Json::Value OtherDocActivateEvent::ToJson() const {
    Json::Value data(Json::objectValue);
    data["id"] = "0";
    return NamedWithData("ev-doc-activate", data);
}

Json::Value DocModifiedEvent::ToJson() const {
    return IdEvent("ev-doc-modified");
}

Json::Value DocSavedEvent::ToJson() const {
    return IdEvent("ev-doc-saved");
}

Json::Value DocClosedEvent::ToJson() const {
    return IdEvent("ev-doc-closed");
}

Json::Value DocFormFieldChangedEvent::ToJson() const {
    Json::Value event = IdEvent("ev-doc-form-field-changed");
    event["data"]["fieldName"] = ToUtf8(fieldName_);
    event["data"]["value"] = ToUtf8(value_);
    return event;
}

ChangePageEvent::ChangePageEvent(PageEventSink& sink)
    : BaseEvent(sink), accountPage_(sink.ShowsAccountPage()) {}

Json::Value ChangePageEvent::ToJson() const {
    Json::Value data(Json::objectValue);
    data["page"] = accountPage_ ? "my-plan" : "home";
    return NamedWithData("ev-user-change-page", data);
}

Json::Value UserSignOutEvent::ToJson() const {
    return Named("ev-user-sign-out");
}
