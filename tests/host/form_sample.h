// Test PDFs with form fields, for the host tests of search and forms.
#pragma once

#include <string>
#include <vector>

#include "engine/form_builder.h"
#include "engine/pdf_factory.h"
#include "host_test_support.h"

namespace pdfhost::testing {

// Writes pages of text lines with `fields` added, and gives the path.
inline std::string WriteFormPdf(const TempFolder& folder, const std::string& name,
                                const std::vector<std::vector<std::string>>& pages,
                                const std::vector<engine::FieldDescription>& fields) {
    engine::Context context;
    engine::PdfDescription recipe;
    for (const auto& lines : pages)
        recipe.pages.push_back(engine::PageDescription::TextLines(lines));
    engine::Document document = engine::PdfFactory(context).Build(recipe);
    engine::AddFormFields(document, fields);
    const std::string path = (folder / name).string();
    document.SaveFull(path);
    return path;
}

}  // namespace pdfhost::testing
