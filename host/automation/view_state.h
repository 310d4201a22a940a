// What the scripted "state" line tells about a document's view: its current page and the text
// selection, as
//   "page": I,
//   "selection": null
//              | {"page": I, "rects": [[l,b,r,t], ...]}          (rectangles, PDF page space)
//              | {"ranges": [{"page": I, "start": S, "end": E}, ...]}  (characters S to E)
#pragma once

#include <json/value.h>

namespace pdfhost {

class DocView;

// Adds "page" and "selection" to `entry`.
void DescribeView(const DocView& view, Json::Value& entry);

}  // namespace pdfhost
