// The scripted line {"host":"userRedact","doc":N,"page":I,"rect":[l,b,r,t]}: the user draws a
// Redact annotation of their own over a rectangle (PDF page space) of page I.
#pragma once

#include <string>

#include <json/value.h>

#include "engine/geometry.h"
#include "engine/pdf_value.h"

namespace pdfhost {

class HostApp;
class HostDocument;

// The entries of a Redact annotation the user draws: the rectangle as /Rect and as its one
// quadrilateral, red outline, black fill, printable; no /NM, since no plug-in made it.
engine::PdfValue UserRedactionEntries(const HostDocument& document, int page,
                                      const engine::Rect& rect);

// Adds the line's annotation as the user would (it can be undone). Gives an error text, or ""
// when the annotation stands.
std::string DrawUserRedaction(HostApp& app, HostDocument& document, const Json::Value& line);

}  // namespace pdfhost
