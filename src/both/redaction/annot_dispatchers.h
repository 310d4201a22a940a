// addAnnot turns a stored match into a highlight or redact annotation named by the page and
// remembers it in the store; removeAnnots takes such an annotation away again.
#pragma once

#include <optional>
#include <string>

#include "bridge/base_dispatcher.h"
#include "host/host_abi.h"

struct RedactionServices;
struct SearchRecord;

class AddAnnotDispatcher : public BaseDispatcher {
  public:
    AddAnnotDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    // The batch run's way in, without a view: the annotation goes into a freshly loaded page's
    // list. Fills `annot` with the PDF annotation, or answers the failure.
    std::optional<Json::Value> InsertWithoutView(HostDoc doc, NdxDoc pdf, NdxObject pageDict,
                                                 NdxObject dict, const SearchRecord& record,
                                                 const std::wstring& uniqueIDName,
                                                 HostAnnot& annot);

    const RedactionServices& services_;
};

class RemoveAnnotsDispatcher : public BaseDispatcher {
  public:
    RemoveAnnotsDispatcher(const RedactionServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const RedactionServices& services_;
};
