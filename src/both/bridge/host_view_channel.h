// HostViewChannel: the request channel of a page shown in the host's web view, which a page
// dialog borrows when its own browser can't start. The page calls
// window.external.DispatchFun(module, command, params); the host hands the call to the callback
// of the record below, and the reply text becomes the call's result. Requests carry no
// identifier, and the commands see the dialog as their owner.
#pragma once

#include "host/host_abi.h"

class CommandTable;
class HostApi;
class PageDialog;
struct ChannelFileStream;

class HostViewChannel {
  public:
    // `stream` is the channel's file stream for the plug-in's whole run.
    HostViewChannel(HostApi& host, const CommandTable& commands, PageDialog& dialog,
                    ChannelFileStream& stream);
    HostViewChannel(const HostViewChannel&) = delete;
    HostViewChannel& operator=(const HostViewChannel&) = delete;

    // What BrowserExtOpenWebPage takes: this channel as client data and the dispatch callback.
    HostWebPageRecord& record() { return record_; }

    // The callback: runs the command and sets its reply text into `result`.
    static void BREVAN_HOSTCALL Dispatch(void* client, const wchar_t* module,
                                         const wchar_t* command, const wchar_t* params,
                                         HostWideString result);

  private:
    HostApi& host_;
    const CommandTable& commands_;
    PageDialog& dialog_;
    ChannelFileStream& stream_;
    HostWebPageRecord record_;
};
