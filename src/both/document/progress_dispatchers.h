// The page's progress bar: createProgressBar, updateProgressBar, destroyProgressBar. Every reply
// carries null data; a bar the host cannot make is silently absent.
#pragma once

#include "bridge/base_dispatcher.h"

struct DocumentServices;

// A bar with `title` and a watchdog of `timeout` seconds; a bar already up stays as it is.
class CreateProgressBarDispatcher : public BaseDispatcher {
  public:
    CreateProgressBarDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

// Moves the bar to `currentPos` (0 to 100); a string `title` replaces its text.
class UpdateProgressBarDispatcher : public BaseDispatcher {
  public:
    UpdateProgressBarDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

class DestroyProgressBarDispatcher : public BaseDispatcher {
  public:
    explicit DestroyProgressBarDispatcher(const DocumentServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};
