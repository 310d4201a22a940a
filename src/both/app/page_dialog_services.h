// What the page dialogs and their embedded browser use of the plug-in, handed to the platform
// when it makes a dialog. The application builds it once the host is bound and keeps it for its
// whole life, which outlasts every dialog.
#pragma once

#include <memory>

class AsyncLogger;
class BrevanConfig;
class CommandTable;
class HostApi;
class PageConnection;
class PlatformServices;
class ServiceConfig;
struct CBrowser;
struct ChannelFileStream;

struct PageDialogServices {
    HostApi& host;
    PlatformServices& platform;
    const CommandTable& commands;
    AsyncLogger& logger;
    // Null while the plug-in is not initialised.
    const std::unique_ptr<BrevanConfig>& config;
    const std::unique_ptr<ServiceConfig>& serviceConfig;
    // The host's browser table found at import, if any.
    const std::unique_ptr<CBrowser>& browserExt;
    // Whether the pane's page is the account page rather than the home page.
    const bool& accountPage;
    // The host's scripted page channel, while it stands in for the pane's page.
    const std::unique_ptr<PageConnection>& hostPage;
    // The input files of the embedded browser's channel and of the two host web view channels.
    ChannelFileStream& browserStream;
    ChannelFileStream& paneViewStream;
    ChannelFileStream& batchViewStream;
};
