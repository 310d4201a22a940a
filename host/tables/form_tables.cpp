// Forms: every open document has a form environment and an interactive form (an empty one when
// the file has no fields). Controls of a page come in the order of the page's annotation list.
// A field or control handle is the handle of its dictionary, valid until the document closes;
// for a field with a single control both are the same dictionary.
#include "engine/form_fields.h"
#include "form_edits.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

HostDocument* DocumentOfForm(HostApp& app, NdxInterForm form) {
    if (form == nullptr)
        return nullptr;
    for (const auto& document : app.Documents().All()) {
        if (document->Form().form == form && !document->IsClosing())
            return document.get();
    }
    return nullptr;
}

// The document and dictionary behind a field or control handle.
template <typename Handle>
std::pair<HostDocument*, pdf_obj*> Dictionary(HostApp& app, Handle handle) {
    auto [document, object] = app.Documents().FindObject(reinterpret_cast<NdxObject>(handle));
    if (document == nullptr || document->IsClosing())
        return {nullptr, nullptr};
    return {document, object};
}

// The controls of `page` if it is a page of the form's document.
std::vector<engine::ObjPtr> ControlsOf(HostApp& app, HostDocument& document, NdxPage page) {
    const PdfPageRecord* record = app.Pages().FindPage(page);
    if (record == nullptr || record->document != document.Handle())
        return {};
    return engine::InteractiveForm(document.Engine()).PageControls(record->index);
}

HostFormEnv DocGetInterForm(HostDoc doc) {
    return Guarded<HostFormEnv>(nullptr, [&](HostApp& app) -> HostFormEnv {
        HostDocument* document = FindDocument(app, doc);
        return document != nullptr ? document->Form().environment : nullptr;
    });
}

NdxInterForm InterFormFromEnvironment(HostFormEnv env) {
    return Guarded<NdxInterForm>(nullptr, [&](HostApp& app) -> NdxInterForm {
        if (env == nullptr)
            return nullptr;
        for (const auto& document : app.Documents().All()) {
            if (document->Form().environment == env && !document->IsClosing())
                return document->Form().form;
        }
        return nullptr;
    });
}

// The `index`-th field (from 0) named `name`; names are unique in a well-formed file, so the
// plug-in's index 0 is the field.
NdxFormField InterFormGetField(NdxInterForm form, int index, const wchar_t* name) {
    return Guarded<NdxFormField>(nullptr, [&](HostApp& app) -> NdxFormField {
        HostDocument* document = DocumentOfForm(app, form);
        if (document == nullptr || name == nullptr || index < 0)
            return nullptr;
        const engine::ObjPtr field =
            engine::InteractiveForm(document->Engine()).FindField(Utf8Of(name), index);
        return field ? FieldHandle(*document, field.get()) : nullptr;
    });
}

int InterFormCountPageControls(NdxInterForm form, NdxPage page) {
    return Guarded(0, [&](HostApp& app) {
        HostDocument* document = DocumentOfForm(app, form);
        return document != nullptr ? static_cast<int>(ControlsOf(app, *document, page).size()) : 0;
    });
}

NdxFormControl InterFormGetPageControl(NdxInterForm form, NdxPage page, int index) {
    return Guarded<NdxFormControl>(nullptr, [&](HostApp& app) -> NdxFormControl {
        HostDocument* document = DocumentOfForm(app, form);
        if (document == nullptr || index < 0)
            return nullptr;
        const std::vector<engine::ObjPtr> controls = ControlsOf(app, *document, page);
        if (static_cast<std::size_t>(index) >= controls.size())
            return nullptr;
        return reinterpret_cast<NdxFormControl>(
            document->Objects().HandleOf(controls[static_cast<std::size_t>(index)].get()));
    });
}

// With 0, values are stored and readers are asked to build the appearances; with anything
// else (the start), the host builds them at once.
void InterFormSetUpdateAP(NdxInterForm form, int update) {
    Guarded([&](HostApp& app) {
        if (HostDocument* document = DocumentOfForm(app, form))
            document->Form().buildAppearances = update != 0;
    });
}

void FormFieldGetFullName(NdxFormField field, HostWideString out) {
    Guarded([&](HostApp& app) {
        const auto [document, object] = Dictionary(app, field);
        SetWideUtf8(app, out,
                    document != nullptr
                        ? engine::InteractiveForm(document->Engine()).FullName(object)
                        : std::string());
    });
}

void FormFieldGetValue(NdxFormField field, HostWideString out) {
    Guarded([&](HostApp& app) {
        const auto [document, object] = Dictionary(app, field);
        SetWideUtf8(app, out,
                    document != nullptr ? engine::InteractiveForm(document->Engine()).Value(object)
                                        : std::string());
    });
}

// Writes the value (see engine::InteractiveForm::SetValue for what each type takes); the
// document turns modified, and a nonzero `notify` fires the field-changed hooks.
int FormFieldSetValue(NdxFormField field, const wchar_t* value, int notify) {
    return Guarded(0, [&](HostApp& app) {
        const auto [document, object] = Dictionary(app, field);
        if (document == nullptr || value == nullptr)
            return 0;
        return WriteFieldValue(app, *document, object, Utf8Of(value), notify != 0) ? 1 : 0;
    });
}

int FormControlGetType(NdxFormControl control) {
    return Guarded(0, [&](HostApp& app) {
        const auto [document, object] = Dictionary(app, control);
        return document != nullptr
                   ? static_cast<int>(engine::InteractiveForm(document->Engine()).TypeOf(object))
                   : 0;
    });
}

NdxFormField FormControlGetField(NdxFormControl control) {
    return Guarded<NdxFormField>(nullptr, [&](HostApp& app) -> NdxFormField {
        const auto [document, object] = Dictionary(app, control);
        if (document == nullptr)
            return nullptr;
        return FieldHandle(*document, engine::InteractiveForm(document->Engine()).FieldOf(object));
    });
}

void FormControlGetRect(NdxFormControl control, NdxRect* out) {
    Guarded([&](HostApp& app) {
        if (out == nullptr)
            return;
        *out = NdxRect{};
        const auto [document, object] = Dictionary(app, control);
        if (document == nullptr)
            return;
        const engine::Rect rect = engine::InteractiveForm(document->Engine()).RectOf(object);
        *out = NdxRect{rect.left, rect.bottom, rect.right, rect.top};
    });
}

}  // namespace

void RegisterFormTables(TableManager& tables) {
    tables.Register<Op::HostDocGetInterForm>(&DocGetInterForm);
    tables.Register<Op::NDXInterFormFromEnvironment>(&InterFormFromEnvironment);
    tables.Register<Op::NDXInterFormGetField>(&InterFormGetField);
    tables.Register<Op::NDXInterFormCountPageControls>(&InterFormCountPageControls);
    tables.Register<Op::NDXInterFormGetPageControl>(&InterFormGetPageControl);
    tables.Register<Op::NDXInterFormSetUpdateAP>(&InterFormSetUpdateAP);
    tables.Register<Op::NDXFormFieldGetFullName>(&FormFieldGetFullName);
    tables.Register<Op::NDXFormFieldGetValue>(&FormFieldGetValue);
    tables.Register<Op::NDXFormFieldSetValue>(&FormFieldSetValue);
    tables.Register<Op::NDXFormControlGetType>(&FormControlGetType);
    tables.Register<Op::NDXFormControlGetField>(&FormControlGetField);
    tables.Register<Op::NDXFormControlGetRect>(&FormControlGetRect);
}

}  // namespace pdfhost
