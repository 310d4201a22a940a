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

TEST(ScriptedProcessTest, OpenAskAndQuit) {
    const auto folder =
        std::filesystem::path(testing::TempDir()) / ("scripted-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder / "profile");
    const std::string pdf = (folder / "two pages.pdf").string();
    {
        pdfhost::engine::Context context;
        pdfhost::engine::PdfDescription recipe;
        recipe.pages = {pdfhost::engine::PageDescription::TextLines({"one"}),
                        pdfhost::engine::PageDescription::TextLines({"two"})};
        pdfhost::engine::PdfFactory(context).Write(recipe, pdf);
    }
    const auto input = folder / "input.jsonl";
    std::ofstream(input) << R"({"post":"[\"base\",\"getFilePageCount\",{},\"a\"]"})"
                         << "\n"
                         << R"({"host":"open","path":")" << pdf << "\"}\n"
                         << R"({"post":"[\"base\",\"getFilePageCount\",{},\"b\"]"})"
                         << "\n"
                         << R"({"post":"[\"base\",\"nope\",{},\"c\"]"})"
                         << "\n"
                         << R"({"host":"quit"})"
                         << "\n";
    // Event lines carry fresh ids: their names and order are checked, the rest verbatim.
    std::istringstream lines(RunPdfhost(input, folder / "profile"));
    std::string output;
    std::vector<std::string> eventNames;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(R"({"event":)", 0) != 0) {
            output += line + "\n";
            continue;
        }
        const auto name = line.find(R"(\"name\":\")");
        if (name != std::string::npos)
            eventNames.push_back(line.substr(name + 11, line.find('\\', name + 11) - name - 11));
        EXPECT_EQ(output.find(R"({"opened")"), std::string::npos) << "events come before the reply";
    }
    EXPECT_EQ(eventNames, (std::vector<std::string>{"ev-doc-before-open", "ev-doc-open-success",
                                                    "ev-doc-activate"}));
    std::ostringstream expected;
    expected << R"({"reply":"{\"data\":null,\"ret\":300001,\"uuid\":\"a\"}\n"})"
             << "\n"
             << R"({"opened":1,"path":")" << pdf << "\"}\n"
             << R"({"reply":"{\"data\":{\"pageCount\":2},\"ret\":0,\"uuid\":\"b\"}\n"})"
             << "\n"
             << R"({"reply":"{\"data\":null,\"ret\":400000}\n"})"
             << "\n";
    EXPECT_EQ(output, expected.str());
    std::filesystem::remove_all(folder);
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
