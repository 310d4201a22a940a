// The editor's Save command for the active document, as the File menu and the window command
// run it. A document with a file is saved in place. A temporary one asks for a file with a save
// dialog, is saved there and then replaced by that file: the temporary document closes and the
// saved file opens as the active tab, with the usual hooks. A cancelled dialog saves nothing and
// reports a failed save (did-save with 0).
#pragma once

#include <optional>
#include <string>

class QWidget;

namespace pdfhost {

class HostApp;
class HostDocument;

// Gives the save's result: 1 saved, 0 failed or cancelled (also with no active document).
int SaveActiveDocument(HostApp& app, QWidget* parent);

// Saves in place; a temporary document is saved under a file the user picks instead, and stays
// open as the document of that file. Gives 1 when saved.
int SaveInPlaceOrAsk(HostApp& app, HostDocument& document, QWidget* parent);

// Asks for a PDF file to save to, offering `suggestedName`; nothing when cancelled.
std::optional<std::string> AskSavePath(QWidget* parent, const std::string& suggestedName);

}  // namespace pdfhost
