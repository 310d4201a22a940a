// redactApply burns Redact annotations into the document after asking the user (no prompt in a
// batch run): the ones named by the page, or all of them when the request has no parameters.
// hasOtherRedact tells whether the active document holds Redact annotations this system did not
// make.
#pragma once

#include "bridge/base_dispatcher.h"

class Brevan;

class RedactApplyDispatcher : public BaseDispatcher {
  public:
    RedactApplyDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

class HasOtherRedactDispatcher : public BaseDispatcher {
  public:
    explicit HasOtherRedactDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};
