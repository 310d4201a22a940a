// Writing a form field's value on behalf of a plug-in or the user: the document's form rules
// apply (appearances rebuilt unless switched off), the document turns modified, and the
// field-changed hooks may be told.
#pragma once

#include <string>

#include "engine/mupdf_types.h"
#include "host_abi.h"

namespace pdfhost {

class HostApp;
class HostDocument;

// The field's handle, as NDXFormControlGetField and the field-changed hooks give it.
NdxFormField FieldHandle(HostDocument& document, pdf_obj* field);

// Writes `utf8` into `field` of `document`. When the value is taken, the document is marked
// modified (modified hooks first) and, if `notify`, the field-changed hooks fire with the field,
// unless a modified hook closed the document. Gives whether the value was taken.
bool WriteFieldValue(HostApp& app, HostDocument& document, pdf_obj* field, const std::string& utf8,
                     bool notify);

}  // namespace pdfhost
