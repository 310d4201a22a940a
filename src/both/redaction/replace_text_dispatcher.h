// replaceText puts a new text in the place of one stored match of the active document; the host
// rewrites the page. The store keeps its records as they were.
#pragma once

#include <cstdint>
#include <optional>

#include "bridge/base_dispatcher.h"

struct RedactionServices;

// `index` of replaceText: any JSON number, a fraction cut off; empty when absent, not a number or
// negative. A number beyond the 64-bit range reads as the largest index.
std::optional<int64_t> TruncatedIndexOf(const Json::Value& value);

class ReplaceTextDispatcher : public BaseDispatcher {
  public:
    ReplaceTextDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};
