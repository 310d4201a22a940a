#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>

#include "engine/context.h"
#include "engine/pdf_factory.h"

namespace pdfhost::engine::testing_support {

inline std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

// Standard output of a shell command (an independent PDF reader, for example).
inline std::string RunCommand(const std::string& command) {
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    if (!pipe)
        return {};
    std::string output;
    std::array<char, 4096> buffer{};
    std::size_t read = 0;
    while ((read = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) > 0) {
        output.append(buffer.data(), read);
    }
    return output;
}

// A test name made of a case's description: letters and digits kept, the rest "_".
inline std::string CaseName(std::string_view description) {
    std::string name;
    for (const char c : description)
        name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
    return name;
}

// A fresh folder per test under the test temporary folder, with a context and a factory.
class EngineTest : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::path(::testing::TempDir()) / "pdfhost-engine" /
                  (std::string(info->test_suite_name()) + "." + info->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string PathOf(const std::string& name) const { return (folder_ / name).string(); }

    std::string WritePdf(const std::string& name, const PdfDescription& recipe) {
        const std::string path = PathOf(name);
        factory_.Write(recipe, path);
        return path;
    }

    std::filesystem::path folder_;
    Context context_;
    PdfFactory factory_{context_};
};

}  // namespace pdfhost::engine::testing_support
