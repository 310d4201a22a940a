#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "engine/geometry.h"
#include "engine/rgb_image.h"

namespace pdfhost::engine {

// Description of a PDF that PdfFactory writes. Coordinates are PDF page space (points, y up).

// One line of text in Helvetica, its baseline starting at (x, y). UTF-8; characters outside
// Latin-1 are written as '?'.
struct TextItem {
    float x = 72;
    float y = 720;
    float size = 12;
    std::string text{};
};

// A generated RGB picture of pixel_width x pixel_height pixels (a colour gradient that depends
// on `seed`) drawn into `placement`; or, when `picture` is set, those pixels instead (a scan).
struct ImageItem {
    Rect placement{72, 432, 540, 720};
    int pixel_width = 64;
    int pixel_height = 48;
    int seed = 0;
    std::shared_ptr<const RgbImage> picture{};
};

// A rectangle path, filled or stroked.
struct PathItem {
    Rect rect{72, 72, 272, 172};
    bool fill = true;
};

// An axial shading painted over `area` (clipped to it).
struct ShadingItem {
    Rect area{72, 72, 272, 172};
};

// A form XObject drawn into `placement`; its own content shows `text` and a stroked frame.
struct FormItem {
    Rect placement{72, 600, 372, 700};
    std::string text = "Form content";
};

using PageItem = std::variant<TextItem, ImageItem, PathItem, ShadingItem, FormItem>;

// One page: its size and content objects, drawn in order.
struct PageDescription {
    float width = 612;
    float height = 792;
    std::vector<PageItem> items{};

    // Appends one content object; returns *this for chaining.
    template <class Item>
    PageDescription& Add(Item item) {
        items.emplace_back(std::in_place_type<Item>, std::move(item));
        return *this;
    }

    static PageDescription Blank() { return {}; }
    // Lines at the left margin from the top down, 12 pt, 18 pt apart.
    static PageDescription TextLines(const std::vector<std::string>& lines);
    static PageDescription ImageOnly(int seed = 0);
    static PageDescription PathsOnly();
    static PageDescription FormOnly(const std::string& text = "Form content");
};

enum class EncryptionMethod { kRc4_128, kAes128 };

struct Encryption {
    EncryptionMethod method = EncryptionMethod::kAes128;
    std::string user_password{};
    std::string owner_password{};
    // Bits granted, see permissions.h (e.g. kPrint | kAnnotate for "copy forbidden").
    std::uint32_t permissions = 0;
};

struct PdfDescription {
    std::vector<PageDescription> pages{};
    // Info dictionary entries, values as raw string bytes (dates in PDF form, e.g.
    // "D:20240102030405+01'00'"). Empty: the file has no Info dictionary.
    std::map<std::string, std::string> info{};
    std::optional<Encryption> encryption{};
};

}  // namespace pdfhost::engine
