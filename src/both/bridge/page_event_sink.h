// What the page's events need of the plug-in: the way to the task pane's page, the registry ids
// of documents and which page the pane shows.
#pragma once

#include <string>
#include <vector>

#include "host/host_abi.h"

class PageEventSink {
  public:
    virtual ~PageEventSink() = default;

    // Hands a script call of the page's `functionName` to the task pane of the host's current
    // main window.
    virtual void SendToTaskPane(const std::wstring& functionName,
                                const std::vector<std::wstring>& args) = 0;
    // The id the registry holds for `doc`, or else for its file path; empty when it knows neither.
    virtual std::wstring EventFileIdOf(HostDoc doc) const = 0;
    // Whether the pane is to show the account page rather than the home page.
    virtual bool ShowsAccountPage() const = 0;
};
