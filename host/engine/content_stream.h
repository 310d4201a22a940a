#pragma once

#include <string>
#include <string_view>

#include "engine/geometry.h"

namespace pdfhost::engine {

// Writes PDF content-stream operators as text. Numbers are written without locale.
class ContentStream {
  public:
    void SaveState() { text_ += "q\n"; }
    void RestoreState() { text_ += "Q\n"; }
    // Maps the unit square onto `rect` (for images) or moves the origin to its corner.
    void MapUnitSquareTo(const Rect& rect);
    void MoveOriginTo(float x, float y);
    void FillColor(float r, float g, float b);
    void StrokeColor(float r, float g, float b);
    void Rectangle(const Rect& rect, bool fill);
    void ClipTo(const Rect& rect);
    // One text object: `font` is a resource name, `utf8` the text (see PdfTextLiteral).
    void Text(std::string_view font, float size, float x, float y, const std::string& utf8);
    void Draw(std::string_view xobject) { Operator("/", xobject, " Do\n"); }
    void Shade(std::string_view shading) { Operator("/", shading, " sh\n"); }

    const std::string& str() const { return text_; }

  private:
    void Number(float value);
    void Operator(std::string_view prefix, std::string_view name, std::string_view suffix);

    std::string text_;
};

// A PDF string literal "(...)" of UTF-8 text in a single-byte Latin-1 encoding: characters
// above U+00FF, C1 controls and malformed bytes become '?'; parentheses, backslashes and
// control characters are escaped.
std::string PdfTextLiteral(const std::string& utf8);

}  // namespace pdfhost::engine
