// pdfhost's scripted mode as a separate process, with the plug-in loaded from the build.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "engine/context.h"
#include "engine/pdf_factory.h"

namespace {

std::string RunPdfhost(const std::filesystem::path& input, const std::filesystem::path& profile) {
    const std::string command = std::string(PDFHOST_BINARY) + " --headless --script --profile '" +
                                profile.string() + "' --plugins '" + BREVAN_PLUGIN_DIR + "' < '" +
                                input.string() + "'";
    std::string output;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[4096];
        while (std::size_t n = fread(buffer, 1, sizeof buffer, pipe))
            output.append(buffer, n);
        EXPECT_EQ(pclose(pipe), 0);
    }
    return output;
}

// What the user does in the editor reaches the page as events: name and document id, in order.
TEST(ScriptedProcessTest, TheUsersActionsReachThePageAsEvents) {
    const auto folder =
        std::filesystem::path(testing::TempDir()) / ("events-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder / "profile");
    std::vector<std::string> pdfs;
    for (const char* name : {"a.pdf", "b.pdf"}) {
        pdfs.push_back((folder / name).string());
        pdfhost::engine::Context context;
        pdfhost::engine::PdfDescription recipe;
        recipe.pages = {pdfhost::engine::PageDescription::TextLines({name})};
        pdfhost::engine::PdfFactory(context).Write(recipe, pdfs.back());
    }
    const auto input = folder / "input.jsonl";
    std::ofstream(input) << R"({"host":"open","path":")" << pdfs[0] << "\"}\n"
                         << R"({"host":"open","path":")" << pdfs[1] << "\"}\n"
                         << R"({"host":"activate","doc":1})"
                         << "\n"
                         << R"({"host":"startPage"})"
                         << "\n"
                         << R"({"host":"activate","doc":1})"
                         << "\n"
                         << R"({"host":"userRedact","doc":1,"page":0,"rect":[10,10,50,50]})"
                         << "\n"
                         << R"({"host":"save","doc":1})"
                         << "\n"
                         << R"({"host":"close","doc":2})"
                         << "\n"
                         << R"({"host":"answer","dialog":"welcome","value":0})"
                         << "\n"
                         << R"({"host":"answer","dialog":"signIn","value":true})"
                         << "\n"
                         << R"({"host":"ribbon","item":"Profile"})"
                         << "\n"
                         << R"({"host":"quit"})"
                         << "\n";
    // Each event as "name id-or-page", the ids of the two documents replaced by A and B.
    std::istringstream lines(RunPdfhost(input, folder / "profile"));
    std::vector<std::string> events;
    std::vector<std::string> ids;
    const auto field = [](const std::string& line, const std::string& key) {
        const std::string opening = "\\\"" + key + "\\\":\\\"";
        const auto at = line.find(opening);
        if (at == std::string::npos)
            return std::string("-");
        const auto start = at + opening.size();
        return line.substr(start, line.find('\\', start) - start);
    };
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(R"({"event":)", 0) != 0)
            continue;
        std::string subject = field(line, "id");
        if (subject.starts_with("{")) {
            auto known = std::find(ids.begin(), ids.end(), subject);
            if (known == ids.end())
                known = ids.insert(ids.end(), subject);
            subject = std::string(1, static_cast<char>('A' + (known - ids.begin())));
        } else if (subject == "-") {
            subject = field(line, "page");
        }
        events.push_back(field(line, "name") + " " + subject);
    }
    EXPECT_EQ(events, (std::vector<std::string>{
                          "ev-doc-before-open -", "ev-doc-open-success A", "ev-doc-activate A",
                          "ev-doc-before-open -", "ev-doc-open-success B", "ev-doc-activate B",
                          "ev-doc-activate A", "ev-doc-activate 0", "ev-doc-activate A",
                          "ev-doc-modified A", "ev-doc-saved A", "ev-doc-closed B",
                          "ev-user-change-page my-plan"}));
    std::filesystem::remove_all(folder);
}

}  // namespace
