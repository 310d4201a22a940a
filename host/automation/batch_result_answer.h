// The answer to a batch's result dialog: 1 presses OK, anything else closes it without OK.
// Printed: {"dialog":"result","title":T,"ret":R,"message":M,"failedFileList":[...],
// "picture":P,"listShown":B,"heightChange":H,"answer":V}, read from the dialog's properties.
#pragma once

#include "automation/batch_answer_support.h"

namespace pdfhost {

class DialogAnswers;

void AnswerBatchResult(QDialog& dialog, DialogAnswers& answers, const LineSink& sink);

}  // namespace pdfhost
