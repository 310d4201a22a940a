#pragma once

#include "engine/document.h"

namespace pdfhost::engine {

// Turning form fields into page content, as printing or "flatten" does: what a widget shows
// becomes part of the page, and the widget goes.

// Draws the appearance of every shown widget of page `page` over its content (hidden widgets
// and unsigned signature fields draw nothing), then removes all widgets of the page. A widget
// without an appearance, or in a document that asks for new appearances, gets one built from its
// value first. Throws Error for a page out of range or when MuPDF fails.
void FlattenPageWidgets(Document& document, int page);

// Removes the document's interactive form once no page has a widget left; gives whether it did.
bool DropEmptyForm(Document& document);

}  // namespace pdfhost::engine
