// A Redact annotation of the user's own, drawn in the editor over an area or over selected text:
// red outline, black fill, printable, one quadrilateral per rectangle, and no /NM, since no
// plug-in made it. It is added as any edit of the user's: the document becomes modified and
// the addition can be undone.
#pragma once

#include <vector>

#include "engine/geometry.h"
#include "engine/pdf_value.h"
#include "host_abi.h"

namespace pdfhost {

class HostApp;
class HostDocument;

// The annotation's entries: /Rect around `quads`, /QuadPoints with one quadrilateral each.
engine::PdfValue UserRedactionEntries(const HostDocument& document, int page,
                                      const std::vector<engine::Rect>& quads);

// Adds the annotation to `page` and records it for undo; plug-ins hear that the document
// changed. Null when `quads` is empty or the document takes no annotation.
HostAnnot AddUserRedaction(HostApp& app, HostDocument& document, int page,
                           const std::vector<engine::Rect>& quads);

// Covers the view's text selection: one annotation per page it touches. Gives how many were
// added.
int RedactSelection(HostApp& app, HostDocument& document);

}  // namespace pdfhost
