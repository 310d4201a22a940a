// The page side of a bridge channel, whatever shows the page.
#pragma once

#include <functional>
#include <string>
#include <string_view>

// Replies go back as strings, events run as scripts.
class PageEndpoint {
  public:
    virtual ~PageEndpoint() = default;
    virtual void PostWebMessageAsString(const std::wstring& text) = 0;
    virtual void ExecuteScript(const std::wstring& script) = 0;
};

// A live connection to a page: an endpoint plus the messages the page posts (UTF-8 text).
class PageConnection : public PageEndpoint {
  public:
    using MessageHandler = std::function<void(std::string_view utf8Text)>;
    virtual void SetMessageHandler(MessageHandler handler) = 0;
};
