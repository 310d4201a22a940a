#pragma once

#include <string>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"

namespace pdfhost::engine {

enum class FieldKind {
    kText,
    kRichText,
    kCheckBox,
    kRadioGroup,
    kComboBox,
    kListBox,
    kPushButton,
    kSignature,
};

// One control of a field: where it stands and, for a check box or radio button, the name of
// its on-state.
struct ControlPlacement {
    int page = 0;
    Rect rect{72, 600, 272, 620};
    std::string onState = "Yes";
};

// A form field to add. Coordinates are PDF page space.
struct FieldDescription {
    FieldKind kind = FieldKind::kText;
    std::string name;  // partial name
    // Partial name of a field without a value that holds this one as a kid: "person" makes the
    // full name "person.<name>". Fields naming the same parent share it.
    std::string parent{};
    std::vector<ControlPlacement> controls{ControlPlacement{}};
    // Text or selected option; for buttons the on-state of the selected control ("" = off).
    std::string value{};
    std::vector<std::string> options{};  // choices
    bool multiline = false;
};

// Adds an interactive form with these fields to the document, each control with an
// appearance (text in Helvetica; buttons as a filled or empty square), in the order given.
// Throws Error for a control on a page that does not exist.
void AddFormFields(Document& document, const std::vector<FieldDescription>& fields);

}  // namespace pdfhost::engine
