// Paths made from wide text and UTF-8: names beyond ASCII open the file they name, and the last
// component follows either separator.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "util/new_file.h"
#include "util/wide_path.h"

namespace {

namespace fs = std::filesystem;

TEST(WidePathTest, LastComponentFollowsEitherSeparator) {
    const std::pair<std::wstring_view, std::wstring_view> cases[] = {{L"/docs/a.pdf", L"a.pdf"},
                                                                     {L"C:\\docs\\a.pdf", L"a.pdf"},
                                                                     {L"\\\\srv\\share\\b", L"b"},
                                                                     {L"d\\e/f", L"f"},
                                                                     {L"d/e\\f", L"f"},
                                                                     {L"plain", L"plain"},
                                                                     {L"folder/", L""},
                                                                     {L"", L""}};
    for (const auto& [path, last] : cases)
        EXPECT_EQ(LastPathComponent(path), last) << std::wstring(path).size();
}

TEST(WidePathTest, NamesBeyondAsciiAreWrittenAndReadBackUnderTheirOwnName) {
    const fs::path folder = fs::path(testing::TempDir()) / PathOfUtf8("wide-\u00e9");
    fs::create_directories(folder);
    const std::wstring name = L"r\u00e9sum\u00e9 \u4e2d\U0001F600.txt";
    const fs::path file = folder / PathOfWide(name);
    EXPECT_EQ(WideOfPath(file.filename()), name);
    EXPECT_EQ(Utf8OfPath(file.filename()), "r\u00e9sum\u00e9 \u4e2d\U0001F600.txt");
    EXPECT_EQ(PathOfUtf8(Utf8OfPath(file)), file);

    {
        const OwnedFile created = CreateNewFile(file);
        ASSERT_NE(created, nullptr);
        EXPECT_GE(std::fputs("written", created.get()), 0);
    }
    EXPECT_EQ(CreateNewFile(file), nullptr) << "an existing file is never opened";
    std::ifstream in(PathOfWide(WideOfPath(folder) + L"/" + name), std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "written");
    EXPECT_EQ(fs::directory_iterator(folder)->path().filename(), PathOfWide(name));
    in.close();
    fs::remove_all(folder);
}

}  // namespace
