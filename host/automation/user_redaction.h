// The scripted line {"host":"userRedact","doc":N,"page":I,"rect":[l,b,r,t]}: the user draws a
// Redact annotation of their own over a rectangle (PDF page space) of page I.
#pragma once

#include <string>

#include <json/value.h>

namespace pdfhost {

class HostApp;
class HostDocument;

// Adds the line's annotation as the user would (it can be undone). Gives an error text, or ""
// when the annotation stands.
std::string DrawUserRedaction(HostApp& app, HostDocument& document, const Json::Value& line);

}  // namespace pdfhost
