#pragma once

#include "engine/document.h"
#include "engine/ocr_recognizer.h"

namespace pdfhost::engine {

// Makes a scanned page searchable: renders page `page` in grey at `dpi`, recognises its words and
// writes them over the page as invisible text (render mode 3, Helvetica, each word stretched to
// the width it covers in the picture), so that text search, selection and extraction find them
// where they stand. Gives the number of words written. Throws Error for a page out of range or
// when rendering or recognition fails.
int AddOcrTextLayer(Document& document, int page, OcrRecognizer& recognizer, int dpi = 300);

}  // namespace pdfhost::engine
