// Form field commands: getAllFormFields lists every named control of the current document and
// stores each as a result, so the page can mark and annotate a field like a text match;
// setFormFieldValue writes a value into a named field of any open document.
#pragma once

#include "bridge/base_dispatcher.h"

class Brevan;

// The name of a control type number ("TextField" for 4 ...), "Unknown" outside 1 to 9.
const char* ControlTypeName(int type);

class GetAllFormFieldsDispatcher : public BaseDispatcher {
  public:
    explicit GetAllFormFieldsDispatcher(Brevan& app) : app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};

class SetFormFieldValueDispatcher : public BaseDispatcher {
  public:
    SetFormFieldValueDispatcher(Brevan& app, const CommandParams& params)
        : BaseDispatcher(params), app_(app) {}
    Json::Value Run() override;

  private:
    Brevan& app_;
};
