// The answer to the batch's file list: the queued paths are added as the add-files button adds
// them, the checked rows are printed, the options dialog is opened when an options answer waits,
// and OK is pressed. Printed: {"dialog":"fileList","title":T,"answer":V,"rows":[...],
// "totalPages":N}. Without a usable answer, or with OK disabled or refused, the list is
// cancelled.
#pragma once

#include "automation/batch_answer_support.h"

namespace pdfhost {

class DialogAnswers;

// `afterOptions` runs once the options dialog's run is over, before OK is pressed.
void AnswerFileList(QDialog& dialog, DialogAnswers& answers, const LineSink& sink,
                    const std::function<void()>& afterOptions);

// The rows of the list as the line shows them, and the pages of the accepted ones.
Json::Value FileListRows(QDialog& dialog, int* totalPages);

}  // namespace pdfhost
