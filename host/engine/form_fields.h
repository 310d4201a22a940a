#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/document.h"
#include "engine/geometry.h"
#include "engine/mupdf_types.h"

namespace pdfhost::engine {

// Kinds of form controls, numbered as the editor's tables number them.
enum class ControlType : int {
    kUnknown = 0,
    kPushButton = 1,
    kRadioButton = 2,
    kCheckBox = 3,
    kTextField = 4,
    kRichText = 5,
    kFile = 6,
    kListBox = 7,
    kComboBox = 8,
    kSignature = 9,
};

// Whether a control holds typed text (text field, rich text, file name).
bool HoldsText(ControlType type);

// The interactive form of one document. A control is a widget annotation dictionary; a field
// is the terminal field dictionary that holds the value (a single-control field is one
// dictionary for both). The dictionaries passed in are those of this document.
class InteractiveForm {
  public:
    explicit InteractiveForm(Document& document) : document_(document) {}

    // The widgets of a page in the order of its /Annots array; empty for a page out of range.
    std::vector<ObjPtr> PageControls(int page) const;

    // The type of a control or field, from its (inherited) /FT and field flags.
    ControlType TypeOf(pdf_obj* control) const;
    // The nearest dictionary, from the control up its /Parent chain, that has a name (/T); the
    // control itself when none has.
    pdf_obj* FieldOf(pdf_obj* control) const;
    // The control's /Rect, PDF page space.
    Rect RectOf(pdf_obj* control) const;

    // Partial names joined with "." from the root field down; UTF-8.
    std::string FullName(pdf_obj* field) const;
    // The value as text: a text field's text, a button's state name ("Off" when off), a
    // choice's selected value (several joined with ", "). UTF-8.
    std::string Value(pdf_obj* field) const;

    // The `index`-th terminal field (from 0, in the order of the field tree) whose full name is
    // `fullName`; a null ObjPtr if there is none. Names are unique in a well-formed file.
    ObjPtr FindField(std::string_view fullName, int index = 0) const;

    // Writes a value as a user would enter it and gives whether it was taken. Text fields take
    // any text, choice fields their option; check boxes and radio buttons take the on-state name
    // of one of their controls, "true" for the first control's on-state, and "", "Off" or
    // "false" for off. Push buttons and signatures take nothing. With `buildAppearances` every
    // control of the field gets its appearance rebuilt; without, the value is stored and the
    // form asks readers to build appearances (/NeedAppearances). A document that forbids
    // filling in forms takes nothing. A refused value leaves the document unchanged.
    bool SetValue(pdf_obj* field, std::string_view value, bool buildAppearances);

  private:
    bool SetButton(pdf_obj* field, std::string_view value);

    Document& document_;
};

}  // namespace pdfhost::engine
