#include "automation/field_typing.h"

#include "engine/form_fields.h"
#include "form_edits.h"
#include "host_app.h"

namespace pdfhost {

std::string TypeIntoField(HostApp& app, HostDocument& document, const Json::Value& line) {
    const Json::Value& name = line["name"];
    const Json::Value& value = line["value"];
    if (!name.isString() || name.asString().empty())
        return "\"setField\" needs a \"name\" string";
    if (!value.isString() && !value.isNumeric() && !value.isBool())
        return "\"setField\" needs a \"value\" string";
    const std::string text =
        value.isBool() ? (value.asBool() ? "true" : "false") : value.asString();
    try {
        const engine::ObjPtr field =
            engine::InteractiveForm(document.Engine()).FindField(name.asString());
        if (!field)
            return "no field " + name.asString() + " in document " +
                   std::to_string(document.Number());
        if (!WriteFieldValue(app, document, field.get(), text, true))
            return "field " + name.asString() + " does not take the value " + text;
    } catch (const std::exception& error) {
        return std::string("cannot fill in field ") + name.asString() + ": " + error.what();
    }
    return {};
}

}  // namespace pdfhost
