// The scripted line {"host":"setField","doc":N,"name":F,"value":V}: the user types V into form
// field F of document N.
#pragma once

#include <string>

#include <json/value.h>

namespace pdfhost {

class HostApp;
class HostDocument;

// Types the line's "value" (a string, or a number or boolean taken as its text) into the field
// whose full name is the line's "name", as a user would: appearances rebuilt, the document
// modified, then the field-changed hooks told. Gives an error text, or "" when the field took
// the value.
std::string TypeIntoField(HostApp& app, HostDocument& document, const Json::Value& line);

}  // namespace pdfhost
