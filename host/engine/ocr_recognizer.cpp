#include "engine/ocr_recognizer.h"

#include <tesseract/capi.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "engine/error.h"

namespace pdfhost::engine {
namespace {

constexpr const char* kSystemFolders[] = {
    "/usr/share/tesseract-ocr/5/tessdata",
    "/usr/share/tesseract-ocr/4.00/tessdata",
    "/usr/share/tessdata",
    "/usr/local/share/tessdata",
};

struct IteratorDelete {
    void operator()(TessResultIterator* iterator) const { TessResultIteratorDelete(iterator); }
};
struct TextDelete {
    void operator()(char* text) const { TessDeleteText(text); }
};

bool HoldsLanguage(const std::filesystem::path& folder, const std::string& language) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(folder / (language + ".traineddata"), ignored);
}

// The words of a recognised page, in reading order.
std::vector<OcrWord> WordsOf(TessResultIterator* result) {
    std::vector<OcrWord> words;
    TessPageIterator* page = TessResultIteratorGetPageIterator(result);
    int line = -1;
    int lineHeight = 0;
    do {
        if (line < 0 || TessPageIteratorIsAtBeginningOf(page, tesseract::RIL_TEXTLINE)) {
            ++line;
            int left = 0, top = 0, right = 0, bottom = 0;
            lineHeight = TessPageIteratorBoundingBox(page, tesseract::RIL_TEXTLINE, &left, &top,
                                                     &right, &bottom)
                             ? bottom - top
                             : 0;
        }
        const std::unique_ptr<char, TextDelete> text(
            TessResultIteratorGetUTF8Text(result, tesseract::RIL_WORD));
        OcrWord word;
        if (text == nullptr || !TessPageIteratorBoundingBox(page, tesseract::RIL_WORD, &word.left,
                                                            &word.top, &word.right, &word.bottom)) {
            continue;
        }
        word.text = text.get();
        if (word.text.find_first_not_of(" \t\r\n") == std::string::npos)
            continue;
        int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        if (TessPageIteratorBaseline(page, tesseract::RIL_WORD, &x1, &y1, &x2, &y2) && x2 != x1) {
            const float slope = static_cast<float>(y2 - y1) / static_cast<float>(x2 - x1);
            word.baselineLeft = static_cast<float>(y1) + slope * static_cast<float>(word.left - x1);
            word.baselineRight =
                static_cast<float>(y1) + slope * static_cast<float>(word.right - x1);
        } else {
            word.baselineLeft = word.baselineRight = static_cast<float>(word.bottom);
        }
        word.line = line;
        word.lineHeight = lineHeight > 0 ? lineHeight : word.bottom - word.top;
        words.push_back(std::move(word));
    } while (TessResultIteratorNext(result, tesseract::RIL_WORD));
    return words;
}

}  // namespace

std::optional<std::string> OcrRecognizer::FindDataFolder(const std::string& language) {
    if (const char* prefix = std::getenv("TESSDATA_PREFIX"); prefix != nullptr && *prefix != 0) {
        // Older installations point at the folder above tessdata.
        for (const std::filesystem::path& folder :
             {std::filesystem::path(prefix), std::filesystem::path(prefix) / "tessdata"}) {
            if (HoldsLanguage(folder, language))
                return folder.string();
        }
    }
    for (const char* folder : kSystemFolders) {
        if (HoldsLanguage(folder, language))
            return std::string(folder);
    }
    return std::nullopt;
}

OcrRecognizer::OcrRecognizer(const std::string& language) : api_(TessBaseAPICreate()) {
    if (api_ == nullptr)
        throw Error("cannot start text recognition");
    const std::optional<std::string> folder = FindDataFolder(language);
    if (!folder.has_value()) {
        TessBaseAPIDelete(api_);
        throw Error("cannot start text recognition: no data for language " + language);
    }
    if (TessBaseAPIInit3(api_, folder->c_str(), language.c_str()) != 0) {
        TessBaseAPIDelete(api_);
        throw Error("cannot start text recognition for language " + language);
    }
}

OcrRecognizer::~OcrRecognizer() {
    TessBaseAPIEnd(api_);
    TessBaseAPIDelete(api_);
}

std::vector<OcrWord> OcrRecognizer::Recognize(const GreyImageView& image, int dpi) {
    if (image.pixels == nullptr || image.width <= 0 || image.height <= 0)
        return {};
    TessBaseAPISetImage(api_, image.pixels, image.width, image.height, 1, image.stride);
    TessBaseAPISetSourceResolution(api_, dpi);
    if (TessBaseAPIRecognize(api_, nullptr) != 0) {
        TessBaseAPIClear(api_);
        throw Error("text recognition failed");
    }
    std::vector<OcrWord> words;
    {
        // The iterator reads the results, so it goes before they are cleared.
        const std::unique_ptr<TessResultIterator, IteratorDelete> result(
            TessBaseAPIGetIterator(api_));
        if (result != nullptr)
            words = WordsOf(result.get());
    }
    TessBaseAPIClear(api_);
    return words;
}

}  // namespace pdfhost::engine
