// FakeFileHost: a FakePdfHost that also saves, closes and opens files hidden, reads page text as
// lines, flattens form fields, shows progress windows, encodes base64 and offers the OCR
// extension. Files opened hidden are looked up by their bytes in `disk`, so a test can tell which
// file the plug-in copied and opened.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fake_pdf_host.h"

struct FakeProgress {
    int flag = -1;
    std::wstring text;
    int low = 0;
    int high = 0;
    std::vector<int> positions;
    int pumps = 0;
    bool destroyed = false;
};

class FakeFileHost : public FakePdfHost {
  public:
    // The progress window that is up, or null.
    FakeProgress* Bar();
    // Every progress window made, in order.
    std::vector<std::unique_ptr<FakeProgress>> progressWindows;
    // Runs the document saved hooks as the editor does after a save.
    void FireDidSave(HostDoc doc, int result);

    // Knobs and records
    bool refuseProgress = false;
    int cancelAtPump = -1;  // IsCancelled answers yes once this many pumps were made
    bool refuseSave = false;
    bool refuseSaveAs = false;
    std::vector<std::wstring> savedAs;
    std::vector<HostSaveAsOptions> saveAsOptions;
    int liveEncoders = 0;
    int liveStringArrays = 0;
    std::map<std::string, FakePdf> disk;  // hidden-open models by the bytes of their file
    bool copyHasPdf = true;
    bool refuseFlattener = false;
    std::vector<HostDoc> hiddenDocs;
    std::vector<HostDoc> closedDocs;
    std::vector<std::pair<int, int>> textLineArgs;
    std::vector<std::string> flattenerCalls;
    std::vector<std::string> savedToFile;  // path of each NDXDocSaveToFile
    bool ocrTable = false;
    bool ocrDialogFunction = true;
    bool ocrPageFunction = true;
    bool ocrDialogConfirms = true;
    int ocrDialogs = 0;
    std::vector<int> recognisedPages;
    std::wstring ocrLanguage;  // of the last recognised page

    // Progress window
    HostProgress HostProgressNew(HostWindow parent, int flag) override;
    void HostProgressSetText(HostProgress progress, const wchar_t* text) override;
    void HostProgressSetRange(HostProgress progress, int low, int high) override;
    void HostProgressSetPos(HostProgress progress, int pos) override;
    void HostProgressPump(HostProgress progress) override;
    int HostProgressIsCancelled(HostProgress progress) override;
    void HostProgressSetCancelled(HostProgress progress, int cancelled) override;
    void HostProgressDestroy(HostProgress progress) override;

    // Base64 and string arrays
    HostBase64Encoder HostBase64EncoderNew(int paddingChar) override;
    void HostBase64EncoderDestroy(HostBase64Encoder encoder) override;
    void HostBase64Encode(HostBase64Encoder encoder, const void* data, int64_t size,
                          HostByteString out) override;
    HostStringArray HostStringArrayNew() override;
    void HostStringArrayDestroy(HostStringArray array) override;
    void HostStringArrayGet(HostStringArray array, int index, HostWideString out) override;
    int HostStringArrayCount(HostStringArray array) override;

    // Documents
    int HostDocSave(HostDoc doc, int a, int b, int c, int d) override;
    int HostDocSaveAs(HostDoc doc, const wchar_t* path, int a, int b,
                      const HostSaveAsOptions* options) override;
    void HostDocGetFileName(HostDoc doc, HostWideString out) override;
    void HostDocClose(HostDoc doc, int keepOpenCheck, int a, int b) override;
    HostDoc HostDocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions* options) override;
    void NDXPageGetTextLines(HostStringArray out, NdxDoc doc, NdxObject pageDict, int a,
                             int b) override;
    NdxFlattener NDXFlattenerNew(NdxDoc doc) override;
    void NDXFlattenerAddPage(NdxFlattener flattener, NdxPage page, int a, int b) override;
    void NDXFlattenerDone(NdxFlattener flattener) override;
    void NDXDocSaveToFile(NdxDoc doc, const char* utf8Path, int a, int b) override;

    // OCR extension
    HostExtTable HostExtensionFind(const char* name, int version) override;
    HostFunction HostExtensionGetFunction(HostExtTable table, int index) override;
    int OcrRecognizePage(HostExtTable table, NdxPage page, HostOcrOptions* options,
                         int flags) override;
    int OcrShowDialog(HostExtTable table, HostWindow parent, HostOcrOptions* options,
                      HostOcrDialogCallback* callback) override;

  private:
    std::map<const void*, std::unique_ptr<std::vector<std::wstring>>> stringArrays_;
    int encoderPadding_ = 0;
    int ocrTable_ = 0;
};
