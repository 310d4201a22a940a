#include "engine/pdf_spec.h"

namespace pdfhost::engine {

PageSpec PageSpec::TextLines(const std::vector<std::string>& lines) {
    PageSpec page;
    float y = 720;
    for (const std::string& line : lines) {
        page.Add(TextItem{.x = 72, .y = y, .size = 12, .text = line});
        y -= 18;
    }
    return page;
}

PageSpec PageSpec::ImageOnly(int seed) {
    PageSpec page;
    page.Add(ImageItem{.seed = seed});
    return page;
}

PageSpec PageSpec::PathsOnly() {
    PageSpec page;
    page.Add(PathItem{.rect = {72, 600, 300, 700}, .fill = true});
    page.Add(PathItem{.rect = {72, 400, 300, 500}, .fill = false});
    return page;
}

PageSpec PageSpec::FormOnly(const std::string& text) {
    PageSpec page;
    page.Add(FormItem{.text = text});
    return page;
}

}  // namespace pdfhost::engine
