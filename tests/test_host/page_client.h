// PageClient: the page's side of the bridge over the test host's PageChannel. A request is the
// four-element array [module, command, parameters, id] posted as a string; its reply is the one
// text the plug-in posts back.
#pragma once

#include <json/json.h>

#include <optional>
#include <string>
#include <vector>

#include "page_channel.h"

namespace testhost {

// Compact JSON text of a value.
std::string JsonText(const Json::Value& value);
// The value of a JSON text, or nothing when it does not parse.
std::optional<Json::Value> ParseJson(const std::string& text);
// The event object of a script the plug-in ran (" window.__dispatchEvent({...});"), or nothing.
std::optional<Json::Value> EventOf(const std::string& script);
// The names of the objects' members, sorted.
std::vector<std::string> KeysOf(const Json::Value& object);

class PageClient {
  public:
    explicit PageClient(PageChannel& channel) : channel_(channel) {}

    // Posts `text` as it stands and gives every reply it caused, oldest first.
    std::vector<std::string> Exchange(const std::string& text);
    // Posts the request of module "base" and gives its one reply text; nothing when there was not
    // exactly one.
    std::optional<std::string> Request(const std::string& command, const Json::Value& params,
                                       const std::string& id);
    // The events the plug-in ran in the page since the last call, in order.
    std::vector<Json::Value> TakeEvents();

  private:
    PageChannel& channel_;
};

}  // namespace testhost
