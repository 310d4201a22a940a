#include "form_edits.h"

#include "engine/form_fields.h"
#include "host_app.h"

namespace pdfhost {

NdxFormField FieldHandle(HostDocument& document, pdf_obj* field) {
    return reinterpret_cast<NdxFormField>(document.Objects().HandleOf(field));
}

bool WriteFieldValue(HostApp& app, HostDocument& document, pdf_obj* field, const std::string& utf8,
                     bool notify) {
    engine::InteractiveForm form(document.Engine());
    if (!form.SetValue(field, utf8, document.Form().buildAppearances))
        return false;
    const int number = document.Number();
    const HostDoc handle = document.Handle();
    const NdxFormField fieldHandle = FieldHandle(document, field);
    app.MarkModified(document);
    if (notify && app.Documents().FindByNumber(number) != nullptr)
        app.Events().FieldChanged(handle, fieldHandle);
    return true;
}

}  // namespace pdfhost
