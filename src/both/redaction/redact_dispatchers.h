// redactApply burns Redact annotations into the document after asking the user (no prompt in a
// batch run): the ones named by the page, or all of them when the request has no parameters.
// hasOtherRedact tells whether the active document holds Redact annotations this system did not
// make.
#pragma once

#include "bridge/base_dispatcher.h"

struct RedactionServices;

class RedactApplyDispatcher : public BaseDispatcher {
  public:
    RedactApplyDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};

class HasOtherRedactDispatcher : public BaseDispatcher {
  public:
    explicit HasOtherRedactDispatcher(const RedactionServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};
