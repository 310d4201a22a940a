// The options dialog of text recognition: the language, OK and Cancel. On the desktop it is a
// small modal dialog; headless it takes the answer queued for "ocr" (true confirms), printing
// {"dialog":"ocr","language":L,"answer":A} in scripted mode, and is cancelled with
// {"unanswered":"ocr"} when none is queued.
#pragma once

#include <string>

class QWidget;

namespace pdfhost {

class HostApp;

// The name of the language the user confirmed (e.g. L"English"; the text lives as long as the
// process), or null on Cancel. `offered` is preselected when it is one of the languages.
const wchar_t* AskOcrLanguage(HostApp& app, QWidget* parent, const std::wstring& offered);

}  // namespace pdfhost
