// Writes a one-page PDF of text lines, for tests that need files on disk. Usage:
//   make_text_pdf OUT.pdf [--user-password P] [--no-modify] LINE...
// --user-password locks the file with P; --no-modify encrypts it (with an owner password only)
// so that its content may not be changed.
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "engine/context.h"
#include "engine/pdf_description.h"
#include "engine/pdf_factory.h"
#include "engine/permissions.h"

int main(int argc, char** argv) {
    namespace engine = pdfhost::engine;
    if (argc < 3) {
        std::cerr << "usage: make_text_pdf OUT.pdf [--user-password P] [--no-modify] LINE...\n";
        return 2;
    }
    const std::string out = argv[1];
    std::vector<std::string> lines;
    engine::PdfDescription recipe;
    for (int i = 2; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--user-password" && i + 1 < argc) {
            recipe.encryption = engine::Encryption{.user_password = argv[++i],
                                                   .owner_password = "owner",
                                                   .permissions = engine::permission::kAll};
        } else if (arg == "--no-modify") {
            recipe.encryption = engine::Encryption{
                .owner_password = "owner",
                .permissions = engine::permission::kAll & ~engine::permission::kModify};
        } else {
            lines.push_back(arg);
        }
    }
    recipe.pages.push_back(engine::PageDescription::TextLines(lines));
    try {
        engine::Context context;
        engine::PdfFactory(context).Write(recipe, out);
    } catch (const std::exception& error) {
        std::cerr << "make_text_pdf: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
