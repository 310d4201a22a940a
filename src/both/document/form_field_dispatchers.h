// Form field commands: getAllFormFields lists every named control of the current document and
// stores each as a result, so the page can mark and annotate a field like a text match;
// setFormFieldValue writes a value into a named field of any open document.
#pragma once

#include "bridge/base_dispatcher.h"

struct DocumentServices;

// The name of a control type number ("TextField" for 4 ...), "Unknown" outside 1 to 9.
const char* ControlTypeName(int type);

class GetAllFormFieldsDispatcher : public BaseDispatcher {
  public:
    explicit GetAllFormFieldsDispatcher(const DocumentServices& services) : services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

class SetFormFieldValueDispatcher : public BaseDispatcher {
  public:
    SetFormFieldValueDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};
