// The registry's rules: what survives a close, how service ids split, what a picked file does to an
// open document's record, and which files go at the end.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "document/document_registry.h"
#include "util/utf.h"

namespace {

HostDoc Handle(int n) {
    return reinterpret_cast<HostDoc>(static_cast<std::uintptr_t>(n));
}

// That the handle goes and the path stays, the pane, page event and file stream tests show.
TEST(DocumentRegistryTest, ClosedDocumentKeepsItsTailButLosesItsServiceId) {
    DocumentRegistry registry;
    registry.bindAiFileId(L"{A}", L"doc-7-rev-3");
    registry.forgetDoc(L"{A}");
    std::wstring text;
    EXPECT_FALSE(registry.aiFileIdOf(L"{A}", text));
    EXPECT_FALSE(registry.aiFileTailByHead(L"doc-7-rev", text));
    EXPECT_EQ(registry.records().at(L"{A}").aiFileTail, L"3");
}

TEST(DocumentRegistryTest, EmptyKeysAreIgnored) {
    DocumentRegistry registry;
    registry.bindDoc(L"", Handle(1));
    registry.bindDoc(L"{A}", nullptr);
    registry.bindScratchPath(L"{A}", L"", L"/tmp");
    registry.bindAiFileId(L"{A}", L"");
    registry.erase(L"");
    EXPECT_TRUE(registry.records().empty());
    std::wstring id;
    EXPECT_FALSE(registry.findIdByDoc(nullptr, id));
    EXPECT_FALSE(registry.findIdByPath(L"", id));
}

TEST(DocumentRegistryTest, ScratchFilesGoAtDestructionOnlyInsideTheirFolder) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "registry-scratch";
    const auto root = folder / "temp";
    std::filesystem::create_directories(root / "id");
    const auto scratch = root / "id" / "download.pdf";
    const auto kept = root / "kept.pdf";
    const auto outside = folder / "outside.pdf";
    for (const auto& file : {scratch, kept, outside})
        std::ofstream(file) << "x";
    const std::wstring rootText = FromUtf8(root.string());
    {
        DocumentRegistry registry;
        registry.bindScratchPath(L"{S}", FromUtf8(scratch.string()), rootText);
        registry.bindScratchPath(L"{K}", FromUtf8(kept.string()), rootText);
        registry.bindPath(L"{K}", FromUtf8(kept.string()));
        registry.bindScratchPath(L"{O}", FromUtf8((root / ".." / "outside.pdf").string()),
                                 rootText);
        registry.bindScratchPath(L"{GONE}", L"/no/such/file.pdf", rootText);
    }
    EXPECT_FALSE(std::filesystem::exists(scratch));
    EXPECT_TRUE(std::filesystem::exists(kept));
    EXPECT_TRUE(std::filesystem::exists(outside));
    EXPECT_TRUE(std::filesystem::exists(root / "id"));
    std::filesystem::remove_all(folder);
}

TEST(DocumentRegistryTest, WalksTakeTheFirstRecordInIdOrder) {
    DocumentRegistry registry;
    registry.bindPath(L"{B}", L"/same.pdf");
    registry.bindPath(L"{A}", L"/same.pdf");
    std::wstring id;
    EXPECT_TRUE(registry.findIdByPath(L"/same.pdf", id));
    EXPECT_EQ(id, L"{A}");
}

TEST(NewGuidTextTest, UpperCaseVersion4InBracesAndFresh) {
    const std::wregex kGuid(
        L"\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}");
    std::set<std::wstring> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::wstring guid = NewGuidText();
        // Upper-case hexadecimal, version 4, variant 8, 9, A or B.
        ASSERT_TRUE(std::regex_match(guid, kGuid)) << ToUtf8(guid);
        seen.insert(guid);
    }
    EXPECT_EQ(seen.size(), 1000u);
}

}  // namespace
