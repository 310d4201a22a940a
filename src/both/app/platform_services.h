// What the portable plug-in needs from the platform it runs on. The Linux layer (src/qt)
// implements it; tests give their own.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

// The page side of a bridge channel: replies go back as strings, events run as scripts.
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

class PlatformServices {
  public:
    virtual ~PlatformServices() = default;
    // The file of this plug-in library.
    virtual std::wstring ModulePath() = 0;
    // The page channel the host offers in its scripted mode, or null when it offers none.
    virtual std::unique_ptr<PageConnection> ConnectHostPageChannel() = 0;
};

// Made by the platform layer the library is built with.
std::unique_ptr<PlatformServices> CreatePlatformServices();
