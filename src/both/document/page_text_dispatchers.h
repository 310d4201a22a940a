// The page's reading of document text: getFileTexts gives the plain text of one page or of all
// pages of the current document, with what is typed into text fields; runFileOCR has the host's
// OCR extension give a scanned document a text layer, and saves it.
#pragma once

#include "bridge/base_dispatcher.h"

struct DocumentServices;

// `pageIndex` 0-based, or -1 for all pages. A document with a text field anywhere is read from a
// flattened copy of its file, since field values are not part of the page text; so unsaved
// changes of such a document are not in the answer.
class GetFileTextsDispatcher : public BaseDispatcher {
  public:
    GetFileTextsDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};

// Recognises every page of the current document with the OCR extension, after its options dialog
// when `isShowDlg` is true, then marks the document changed and has the host save it. Parameters
// that are not JSON run it without dialog.
class RunFileOCRDispatcher : public BaseDispatcher {
  public:
    static constexpr int32_t kNoOcrExtension = -1;
    static constexpr int32_t kNotRecognised = 1;

    RunFileOCRDispatcher(const DocumentServices& services, const CommandParams& params)
        : BaseDispatcher(params), services_(services) {}
    Json::Value Run() override;

  private:
    const DocumentServices& services_;
};
