// What closing a document with unsaved changes asks, when the caller wants it asked: "Save the
// changes?" with Save, Don't Save and Cancel on the desktop; headless, answered by the queued
// "messageBox" answer (6 Yes, 7 No, 2 Cancel; unanswered it is cancelled). Yes saves first (a
// temporary document asks for a file), No drops the changes, Cancel keeps the document open.
#pragma once

class QWidget;

namespace pdfhost {

class HostApp;
class HostDocument;

// Whether the document may close now. An unmodified or hidden document asks nothing. A save that
// fails or is cancelled keeps it open.
bool ConfirmClose(HostApp& app, HostDocument& document, QWidget* parent);

}  // namespace pdfhost
