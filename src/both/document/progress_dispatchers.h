// The page's progress bar: createProgressBar, updateProgressBar, destroyProgressBar. Every reply
// carries null data; a bar the host cannot make is silently absent.
#pragma once

#include "bridge/base_dispatcher.h"

class Brevan;

// A bar with `title` and a watchdog of `timeout` seconds; a bar already up stays as it is.
class CreateProgressBarDispatcher : public BaseDispatcher {
  public:
    CreateProgressBarDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

// Moves the bar to `currentPos` (0 to 100); a string `title` replaces its text.
class UpdateProgressBarDispatcher : public BaseDispatcher {
  public:
    UpdateProgressBarDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

class DestroyProgressBarDispatcher : public BaseDispatcher {
  public:
    explicit DestroyProgressBarDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};
