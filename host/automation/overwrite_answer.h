// The answer to the list of files a batch would overwrite: true goes on, anything else does not.
// Printed: {"dialog":"overwrite","title":T,"answer":V,"files":[PATH, ...]}.
#pragma once

#include "automation/batch_answer_support.h"

namespace pdfhost {

class DialogAnswers;

void AnswerOverwrite(QDialog& dialog, DialogAnswers& answers, const LineSink& sink);

}  // namespace pdfhost
