#include "engine/pdf_description.h"

namespace pdfhost::engine {

PageDescription PageDescription::TextLines(const std::vector<std::string>& lines) {
    PageDescription page;
    float y = 720;
    for (const std::string& line : lines) {
        page.Add(TextItem{.x = 72, .y = y, .size = 12, .text = line});
        y -= 18;
    }
    return page;
}

PageDescription PageDescription::ImageOnly(int seed) {
    PageDescription page;
    page.Add(ImageItem{.seed = seed});
    return page;
}

PageDescription PageDescription::PathsOnly() {
    PageDescription page;
    page.Add(PathItem{.rect = {72, 600, 300, 700}, .fill = true});
    page.Add(PathItem{.rect = {72, 400, 300, 500}, .fill = false});
    return page;
}

PageDescription PageDescription::FormOnly(const std::string& text) {
    PageDescription page;
    page.Add(FormItem{.text = text});
    return page;
}

}  // namespace pdfhost::engine
