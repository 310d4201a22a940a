// The answer to the output options dialog: the members of the queued object set the controls as
// a user would, in the dialog's order, and OK is pressed with its checks. Its line,
// {"dialog":"options","title":T,"answer":V,"record":R}, is printed once the dialog's run is over
// and the file list holds the record written back: R is that record, or null when the dialog
// was cancelled (no usable answer, or a failed check).
#pragma once

#include "automation/batch_answer_support.h"

class QLineEdit;

namespace pdfhost {

class DialogAnswers;

struct OptionsOutcome {
    Json::Value line;  // "record" still to be filled
    bool accepted = false;
    bool answered = false;
};

// Sets the controls and ends the dialog; prints nothing itself (a failed check's message box
// prints its own line, before the options line).
OptionsOutcome AnswerOutputOptions(QDialog& dialog, DialogAnswers& answers);
// Prints the outcome's line, with the record read from `fileList` (null: no record).
void EmitOptionsLine(OptionsOutcome outcome, QDialog* fileList, const LineSink& sink);

// Puts `text` into `edit` one character at a time, as typing it would, after clearing it; the
// edit's validator drops what it refuses.
void TypeInto(QLineEdit& edit, const QString& text);

// The file list's output record as a line shows it: eight members, flags as booleans.
Json::Value OutputRecord(QDialog& fileList);

}  // namespace pdfhost
