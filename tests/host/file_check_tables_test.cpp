// The checks a plug-in runs on files before a batch: the reader, the security handler, the size
// text, and the save of a hidden document into a folder that is not there.
#include <fstream>

#include "engine/permissions.h"
#include "file_size_text.h"
#include "host_test_support.h"
#include "wide_text.h"

namespace pdfhost::testing {
namespace {

namespace fs = std::filesystem;
namespace perm = engine::permission;

class FileCheckTables : public HostFixture {
  protected:
    std::string Encrypted(const std::string& name, const std::string& userPassword,
                          std::uint32_t permissions) {
        engine::PdfDescription layout = ThreePages();
        layout.encryption = engine::Encryption{
            .user_password = userPassword, .owner_password = "owner", .permissions = permissions};
        return WritePdf(files_, name, layout);
    }

    std::string Text(const std::string& name, const std::string& bytes) {
        const fs::path path = files_ / name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path.string();
    }

    int ReaderVerdict(const std::string& path) {
        HostReader reader = Call<HostReaderCreate>();
        const int result = Call<HostReaderOpen>(reader, WideOf(path).c_str(), 0);
        Call<HostReaderDetach>(reader, 0);
        Call<HostReaderDestroy>(reader);
        return result;
    }

    static HostDoc OpenHidden(const std::string& path) {
        return OpenQuietly(path, /*readOnly=*/true, /*keepHidden=*/true);
    }
};

TEST_F(FileCheckTables, ReaderRefusesWhatCannotBeOpened) {
    const struct {
        const char* what;
        std::string path;
        int expected;
    } cases[] = {
        {"a PDF", WritePdf(files_, "plain.pdf", ThreePages()), 0},
        {"a PDF with restrictions only", Encrypted("owner.pdf", "", perm::kPrint), 0},
        {"a PDF locked by a password", Encrypted("locked.pdf", "secret", perm::kAll), 1},
        {"a text file", Text("notes.pdf", "just some words, no PDF here\n"), 1},
        {"an empty file", Text("empty.pdf", ""), 1},
        {"a missing file", (files_ / "missing.pdf").string(), 1},
        {"a folder", files_.Path().string(), 1},
        {"an empty path", "", 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ReaderVerdict(c.path), c.expected) << c.what;
    EXPECT_EQ(app_.Readers().Size(), 0u);
}

TEST_F(FileCheckTables, StaleReadersAndHandlersAreRefused) {
    HostReader reader = Call<HostReaderCreate>();
    Call<HostReaderDestroy>(reader);
    const std::string path = WritePdf(files_, "plain.pdf", ThreePages());
    EXPECT_NE(Call<HostReaderOpen>(reader, WideOf(path).c_str(), 0), 0);
    Call<HostReaderDetach>(reader, 0);

    HostSecurityHandler handler = Call<HostSecurityHandlerCreate>();
    const NdxDoc pdf = Call<HostDocGetPdfDoc>(OpenHidden(path));
    EXPECT_EQ(Call<HostSecurityHandlerCheck>(handler, pdf, 0), 0);
    EXPECT_NE(Call<HostSecurityHandlerCheck>(handler, nullptr, 0), 0);
    Call<HostSecurityHandlerDestroy>(handler);
    EXPECT_NE(Call<HostSecurityHandlerCheck>(handler, pdf, 0), 0);
}

TEST_F(FileCheckTables, SecurityHandlerRefusesWhatMayNotBeChanged) {
    const struct {
        const char* what;
        std::string path;
        int expected;
    } cases[] = {
        {"unencrypted", WritePdf(files_, "plain.pdf", ThreePages()), 0},
        {"changes allowed", Encrypted("modify.pdf", "", perm::kModify | perm::kCopy), 0},
        {"changes forbidden", Encrypted("nomodify.pdf", "", perm::kPrint | perm::kCopy), 1},
    };
    HostSecurityHandler handler = Call<HostSecurityHandlerCreate>();
    for (const auto& c : cases) {
        const HostDoc doc = OpenHidden(c.path);
        ASSERT_NE(doc, nullptr) << c.what;
        const NdxDoc pdf = Call<HostDocGetPdfDoc>(doc);
        EXPECT_EQ(Call<HostSecurityHandlerCheck>(handler, pdf, 0), c.expected) << c.what;
    }
    Call<HostSecurityHandlerDestroy>(handler);
}

// A hidden document has no tab and a file of its own; a target in a missing folder fails, and
// the folder is not made for it.
TEST_F(FileCheckTables, AHiddenDocumentIsNotSavedIntoAMissingFolder) {
    const HostDoc doc = OpenHidden(WritePdf(files_, "source.pdf", ThreePages()));
    ASSERT_NE(doc, nullptr);
    EXPECT_TRUE(app_.Documents().Tabs().empty());
    EXPECT_EQ(Call<HostDocIsTemporary>(doc), 0);
    const std::string nowhere = (files_ / "missing" / "x.pdf").string();
    const HostSaveAsOptions options{0, 1, 0, 0};
    EXPECT_EQ(Call<HostDocSaveAs>(doc, WideOf(nowhere).c_str(), 0, 0, &options), 0);
    EXPECT_FALSE(fs::exists(files_ / "missing"));
}

TEST_F(FileCheckTables, FileSizesInTheirUnitAndRoundedAlsoThroughTheTable) {
    const std::pair<std::int64_t, const char*> cases[] = {
        {-5, "0 bytes"},
        {0, "0 bytes"},
        {1023, "1023 bytes"},
        {1024, "1.0 KB"},
        {1536, "1.5 KB"},
        {10 * 1024, "10 KB"},
        {1024 * 1024 - 1, "1.0 MB"},
        {5LL * 1024 * 1024 + 300 * 1024, "5.3 MB"},
        {3LL * 1024 * 1024 * 1024, "3.0 GB"},
        {4096LL * 1024 * 1024 * 1024, "4096 GB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(FileSizeText(bytes), text) << bytes;
    EXPECT_EQ(ReadWide([](HostWideString out) { Call<HostFormatFileSize>(int64_t{2048}, out); }),
              L"2.0 KB");
}

}  // namespace
}  // namespace pdfhost::testing
