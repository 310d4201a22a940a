// Loops and runaway depth in a document's form field tree, broken before MuPDF's own recursive
// walks of that tree (deleting a widget, flattening, field lookups) meet them: those walks keep
// no visited set, and a field that is its own kid ends them in a stack overflow.
#pragma once

#include "engine/document.h"

namespace pdfhost::engine {

// Removes every /Kids entry that leads back to one of its own ancestors or lies deeper than the
// tree may go, and every /Parent entry that closes a loop or continues past that depth, from
// the fields under /AcroForm and the widgets of every page. Returns how many links it removed;
// a well-formed document is left untouched.
int BreakFormTreeCycles(const Document& document);

}  // namespace pdfhost::engine
