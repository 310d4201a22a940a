// What saving or closing a document with unsaved changes asks. Closing, when the caller wants it
// asked: "Save the changes?" with Save, Don't Save and Cancel on the desktop; headless, answered
// by the queued "messageBox" answer (6 Yes, 7 No, 2 Cancel; unanswered it is cancelled). Yes
// saves first (a temporary document asks for a file), No drops the changes, Cancel keeps the
// document open.
#pragma once

class QWidget;

namespace pdfhost {

class HostApp;
class HostDocument;

// Whether the user still wants to save a document whose Redact marks are not applied (saved as
// marks, the text under them stays in the file): OK (1) or Cancel (2). A document without such
// marks asks nothing.
bool ConfirmSaveWithMarks(HostApp& app, HostDocument& document);

// Whether the document may close now. An unmodified or hidden document asks nothing. A save that
// fails or is cancelled keeps it open; so does a Cancel at the question about unapplied marks,
// asked before a save when `warnOfMarks` (the desktop's own closes, not a script's).
bool ConfirmClose(HostApp& app, HostDocument& document, QWidget* parent, bool warnOfMarks);

}  // namespace pdfhost
