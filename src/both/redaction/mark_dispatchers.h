// Marking: markTexts selects a stored match with the editor's text select tool and brings it into
// view; clearMarkTexts takes the selection away. A mark is a selection only: nothing is written to
// the document.
#pragma once

#include <optional>

#include "bridge/base_dispatcher.h"
#include "host/host_abi.h"

struct RedactionServices;
struct SearchRecord;

// Where the view must scroll so that a match's first rectangle shows, in page space; empty when
// it already lies inside `visible`.
std::optional<NdxPoint> ScrollTargetFor(const SearchRecord& record, const NdxRect& visible);

class MarkTextDispatcher : public BaseDispatcher {
  public:
    MarkTextDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    void Select(HostTextSelectTool tool, HostPageView pageView, const SearchRecord& record);

    const RedactionServices& services_;
};

class ClearMarkTextsDispatcher : public BaseDispatcher {
  public:
    explicit ClearMarkTextsDispatcher(const RedactionServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};
