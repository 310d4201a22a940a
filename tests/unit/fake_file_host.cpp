#include "fake_file_host.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "util/utf.h"

namespace {

std::string& B(HostByteString s) {
    return *reinterpret_cast<std::string*>(s);
}
std::wstring& W(HostWideString s) {
    return *reinterpret_cast<std::wstring*>(s);
}
FakeProgress& P(HostProgress progress) {
    return *reinterpret_cast<FakeProgress*>(progress);
}
FakePdfPage& PdfPage(NdxPage page) {
    return *reinterpret_cast<FakePdfPage*>(page);
}

std::string Base64(const unsigned char* data, std::size_t size, char padding) {
    static constexpr char kAlphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t i = 0; i < size; i += 3) {
        const std::size_t n = std::min<std::size_t>(3, size - i);
        uint32_t chunk = static_cast<uint32_t>(data[i]) << 16;
        if (n > 1)
            chunk |= static_cast<uint32_t>(data[i + 1]) << 8;
        if (n > 2)
            chunk |= data[i + 2];
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= n ? kAlphabet[(chunk >> (18 - 6 * k)) & 0x3F] : padding;
    }
    return out;
}

void NoFunction() {}

}  // namespace

FakeProgress* FakeFileHost::Bar() {
    for (auto& window : progressWindows) {
        if (!window->destroyed)
            return window.get();
    }
    return nullptr;
}

void FakeFileHost::FireDidSave(HostDoc doc, int result) {
    const auto records = docEventRecords;
    for (HostDocEventRecord* record : records) {
        if (void* fn = record->word(kDocEventDidSave))
            reinterpret_cast<HostDocSaveHook>(fn)(record->word(kDocEventClientData), doc, result);
    }
}

// ---- Progress window

HostProgress FakeFileHost::HostProgressNew(HostWindow, int flag) {
    if (refuseProgress)
        return nullptr;
    progressWindows.push_back(std::make_unique<FakeProgress>());
    progressWindows.back()->flag = flag;
    return reinterpret_cast<HostProgress>(progressWindows.back().get());
}
void FakeFileHost::HostProgressSetText(HostProgress progress, const wchar_t* text) {
    P(progress).text = text;
}
void FakeFileHost::HostProgressSetRange(HostProgress progress, int low, int high) {
    P(progress).low = low;
    P(progress).high = high;
}
void FakeFileHost::HostProgressSetPos(HostProgress progress, int pos) {
    P(progress).positions.push_back(pos);
}
void FakeFileHost::HostProgressPump(HostProgress progress) {
    ++P(progress).pumps;
}
int FakeFileHost::HostProgressIsCancelled(HostProgress progress) {
    return P(progress).pumps == cancelAtPump ? 1 : 0;
}
void FakeFileHost::HostProgressSetCancelled(HostProgress progress, int) {
    P(progress).text += L" (cancel seen)";
}
void FakeFileHost::HostProgressDestroy(HostProgress progress) {
    P(progress).destroyed = true;
}

// ---- Base64 and string arrays

HostBase64Encoder FakeFileHost::HostBase64EncoderNew(int paddingChar) {
    ++liveEncoders;
    encoderPadding_ = paddingChar;
    return reinterpret_cast<HostBase64Encoder>(&encoderPadding_);
}
void FakeFileHost::HostBase64EncoderDestroy(HostBase64Encoder) {
    --liveEncoders;
}
void FakeFileHost::HostBase64Encode(HostBase64Encoder encoder, const void* data, int64_t size,
                                    HostByteString out) {
    const char padding = static_cast<char>(*reinterpret_cast<int*>(encoder));
    B(out) =
        Base64(static_cast<const unsigned char*>(data), static_cast<std::size_t>(size), padding);
}
HostStringArray FakeFileHost::HostStringArrayNew() {
    ++liveStringArrays;
    auto array = std::make_unique<std::vector<std::wstring>>();
    const void* key = array.get();
    stringArrays_.emplace(key, std::move(array));
    return reinterpret_cast<HostStringArray>(const_cast<void*>(key));
}
void FakeFileHost::HostStringArrayDestroy(HostStringArray array) {
    --liveStringArrays;
    stringArrays_.erase(array);
}
void FakeFileHost::HostStringArrayGet(HostStringArray array, int index, HostWideString out) {
    W(out) = stringArrays_.at(array)->at(static_cast<std::size_t>(index));
}
int FakeFileHost::HostStringArrayCount(HostStringArray array) {
    return static_cast<int>(stringArrays_.at(array)->size());
}

// ---- Documents

int FakeFileHost::HostDocSave(HostDoc doc, int, int, int, int) {
    if (refuseSave)
        return 0;
    Doc(doc).modified = false;
    return 1;
}
int FakeFileHost::HostDocSaveAs(HostDoc doc, const wchar_t* path, int, int,
                                const HostSaveAsOptions* options) {
    savedAs.emplace_back(path);
    saveAsOptions.push_back(*options);
    if (refuseSaveAs)
        return 0;
    Doc(doc).path = path;
    Doc(doc).modified = false;
    return 1;
}
void FakeFileHost::HostDocGetFileName(HostDoc doc, HostWideString out) {
    W(out) = std::filesystem::path(ToUtf8(Doc(doc).path)).filename().wstring();
}
void FakeFileHost::HostDocClose(HostDoc doc, int, int, int) {
    closedDocs.push_back(doc);
    Close(doc);
}
// A hidden document is not activated, and its model is the one `disk` holds for the file's bytes.
HostDoc FakeFileHost::HostDocOpenHidden(const wchar_t* path, const HostOpenHiddenOptions*) {
    std::ifstream file(ToUtf8(path), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const auto found = disk.find(bytes);
    if (!file || found == disk.end())
        return nullptr;
    HostDoc shown = active;
    HostDoc doc = OpenPdf(found->second, path);
    active = shown;
    Doc(doc).hasPdf = copyHasPdf;
    hiddenDocs.push_back(doc);
    return doc;
}
void FakeFileHost::NDXPageGetTextLines(HostStringArray out, NdxDoc doc, NdxObject pageDict, int a,
                                       int b) {
    textLineArgs.emplace_back(a, b);
    for (FakePdfPage& page : Pdf(reinterpret_cast<HostDoc>(doc)).pages) {
        if (reinterpret_cast<NdxObject>(page.dict) != pageDict)
            continue;
        for (const FakeLine& line : page.lines)
            stringArrays_.at(out)->push_back(line.text);
    }
}
NdxFlattener FakeFileHost::NDXFlattenerNew(NdxDoc doc) {
    flattenerCalls.push_back("new");
    return refuseFlattener ? nullptr : reinterpret_cast<NdxFlattener>(doc);
}
// Flattening turns every filled text field into a line of its page.
void FakeFileHost::NDXFlattenerAddPage(NdxFlattener, NdxPage page, int a, int b) {
    FakePdfPage& flat = PdfPage(page);
    flattenerCalls.push_back("page" + std::to_string(flat.index) + ":" + std::to_string(a) + "," +
                             std::to_string(b));
    for (const FakeControl& control : flat.controls) {
        if (control.type == kNdxControlTextField && !control.value.empty())
            flat.lines.push_back(FakeLine{control.value});
    }
    flat.controls.clear();
}
void FakeFileHost::NDXFlattenerDone(NdxFlattener) {
    flattenerCalls.push_back("done");
}
void FakeFileHost::NDXDocSaveToFile(NdxDoc, const char* utf8Path, int a, int b) {
    savedToFile.push_back(std::string(utf8Path) + ":" + std::to_string(a) + "," +
                          std::to_string(b));
}

// ---- OCR extension

HostExtTable FakeFileHost::HostExtensionFind(const char* name, int version) {
    if (ocrTable && std::string(name) == "OCRRecognition extension HFT" && version == 1)
        return reinterpret_cast<HostExtTable>(&ocrTable_);
    return FakePdfHost::HostExtensionFind(name, version);
}
HostFunction FakeFileHost::HostExtensionGetFunction(HostExtTable table, int index) {
    const bool offered = table == reinterpret_cast<HostExtTable>(&ocrTable_) &&
                         ((index == 0 && ocrPageFunction) || (index == 2 && ocrDialogFunction));
    return offered ? &NoFunction : nullptr;
}
int FakeFileHost::OcrRecognizePage(HostExtTable, NdxPage page, HostOcrOptions* options, int) {
    recognisedPages.push_back(PdfPage(page).index);
    ocrLanguage = options->language;
    return 1;
}
int FakeFileHost::OcrShowDialog(HostExtTable, HostWindow, HostOcrOptions*,
                                HostOcrDialogCallback* callback) {
    ++ocrDialogs;
    if (ocrDialogConfirms)
        callback->confirmed(callback->client, L"German", 0);
    return 1;
}
