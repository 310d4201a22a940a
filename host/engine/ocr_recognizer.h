#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tesseract {
class TessBaseAPI;
}

namespace pdfhost::engine {

// One recognised word of a page image. Pixel coordinates, y down.
struct OcrWord {
    std::string text;  // UTF-8
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    // The baseline through (left, baselineLeft) and (right, baselineRight).
    float baselineLeft = 0;
    float baselineRight = 0;
    int line = 0;        // words of one text line share it, counted from 0 in reading order
    int lineHeight = 0;  // height of the line's box
};

// An 8-bit grey image, rows top to bottom.
struct GreyImageView {
    const std::uint8_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0;
};

// Optical character recognition with Tesseract. Loading a language takes a while, so one
// recognizer serves many pages. One thread at a time.
class OcrRecognizer {
  public:
    // Loads `language` (a Tesseract name such as "eng") from the first data folder that has it.
    // Throws Error when none has it or Tesseract cannot start.
    explicit OcrRecognizer(const std::string& language);
    ~OcrRecognizer();
    OcrRecognizer(const OcrRecognizer&) = delete;
    OcrRecognizer& operator=(const OcrRecognizer&) = delete;

    // The words of the image in reading order. Throws Error when recognition fails.
    std::vector<OcrWord> Recognize(const GreyImageView& image, int dpi);

    // The data folder that holds `language`: $TESSDATA_PREFIX, else the system's folders.
    static std::optional<std::string> FindDataFolder(const std::string& language);

  private:
    tesseract::TessBaseAPI* api_;
};

}  // namespace pdfhost::engine
