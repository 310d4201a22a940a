// The rules of a batch's output: the naming of results, the options dialog's checks and
// write-back, the overwrite check, and the orders of the file list's columns.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include "batch/file_list_order.h"
#include "batch/mail_attachment_drop.h"
#include "batch/output_naming.h"
#include "batch/output_options.h"
#include "batch/overwrite_check.h"
#include "util/wide_path.h"

namespace {

OutputOptions Options(bool same, bool keep, std::wstring folder = L"", std::wstring prefix = L"",
                      std::wstring suffix = L"") {
    return {same, !same, std::move(folder), keep, !keep, std::move(prefix), std::move(suffix),
            false};
}

using Kind = OutputTarget::Kind;

TEST(BatchNamingTest, EachRowOfTheRuleNamesItsTarget) {
    OutputOptions neither = Options(true, false, L"", L"a", L"b");
    neither.addToName = false;
    OutputOptions noFolderKind = Options(false, true, L"/out/");
    noFolderKind.specificFolder = false;
    OutputOptions chosenNeither = Options(false, false, L"/out/", L"a", L"b");
    chosenNeither.addToName = false;
    const struct {
        std::wstring source;
        OutputOptions options;
        OutputTarget target;
    } rows[] = {
        {L"/in/x.pdf", Options(true, true), {Kind::Source, L"/in/x.pdf"}},
        {L"/in/x.pdf", Options(true, false, L"", L"p_", L"_s"), {Kind::Other, L"/in/p_x_s.pdf"}},
        {L"/in/x.pdf", neither, {}},
        {L"/in/x.pdf", Options(false, true, L"/out/"), {Kind::Other, L"/out/x.pdf"}},
        {L"/in/x.y.pdf",
         Options(false, false, L"/out/", L"", L"_r"),
         {Kind::Other, L"/out/x.y_r.pdf"}},
        {L"/in/x.pdf", chosenNeither, {}},
        {L"/in/x.pdf", noFolderKind, {}},
        // No dot: ".pdf" is appended; a dot in a folder name is not the extension's.
        {L"/in/scan", Options(true, false, L"", L"a", L"b"), {Kind::Other, L"/in/ascanb.pdf"}},
        {L"/in.d/scan", Options(false, true, L"/out//"), {Kind::Other, L"/out//scan"}},
        // A separator only at the start keeps the whole path as the file name.
        {L"/x.pdf", Options(true, false, L"", L"a", L""), {Kind::Other, L"a/x.pdf"}},
        {L"x.PDF", Options(true, false, L"", L"", L"_r"), {Kind::Other, L"x_r.PDF"}},
        {L"C:\\in.d\\x",
         Options(true, false, L"", L"", L"_r"),
         {Kind::Other, L"C:\\in.d\\x_r.pdf"}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(TargetOf(row.source, row.options), row.target)
            << std::string(row.source.begin(), row.source.end());
    }
}

TEST(BatchOptionsTest, OkChecksGoInOrderAndTheStateOfOkFollowsTheFolder) {
    const struct {
        OutputOptionControls controls;
        std::string_view failedKey;
        bool okEnabled;
        bool wouldDiffer;
    } rows[] = {
        // specific, folder, keep, before, after, overwrite
        {{true, L"", true, L"", L"", false}, "IDS_STRING_CHOSEFOLDER", false, false},
        {{true, L"", false, L"", L"", false}, "IDS_STRING_CHOSEFOLDER", false, false},
        {{false, L"", true, L"", L"", false}, "IDS_STRING_OUTPUTTIP", true, false},
        {{false, L"", true, L"", L"", true}, "", true, false},
        {{true, L"/out", true, L"", L"", false}, "", true, true},
        {{false, L"", false, L"", L"", true}, "IDS_STRING_FIXTIP", true, false},
        {{true, L"/out", false, L"", L"", false}, "IDS_STRING_FIXTIP", true, true},
        {{false, L"", false, L"a", L"", false}, "", true, true},
        {{false, L"", false, L"", L"b", false}, "", true, true},
        // A prefix kept in its edit doesn't count once the name is kept.
        {{false, L"", true, L"a", L"b", true}, "", true, false},
    };
    int row = 0;
    for (const auto& r : rows) {
        EXPECT_EQ(FailedOkCheck(r.controls), r.failedKey) << row;
        EXPECT_EQ(OkEnabled(r.controls), r.okEnabled) << row;
        EXPECT_EQ(WouldDiffer(r.controls), r.wouldDiffer) << row;
        ++row;
    }
}

TEST(BatchOptionsTest, WriteBackAppendsOneSlashAndReadingBackDropsIt) {
    const OutputOptions start;
    const OutputOptions chosen = WriteBack({true, L"/out/", false, L"p", L"s", true}, start);
    OutputOptions expected = Options(false, false, L"/out//", L"p", L"s");
    expected.overwrite = true;
    EXPECT_EQ(chosen, expected);
    // The dialog shown again writes the same record back.
    EXPECT_EQ(WriteBack(ControlsOf(chosen), chosen), chosen);

    // Same folder forgets the folder; keeping the name clears the prefix but keeps the suffix.
    expected = Options(true, true, L"", L"", L"s");
    expected.overwrite = true;
    EXPECT_EQ(WriteBack({false, L"/out", true, L"p", L"t", true}, chosen), expected);
}

TEST(BatchOptionsTest, NameEditsDropWhatAFileNameCannotHold) {
    EXPECT_EQ(FileNameCharactersOf(L"a\\b:c*d?e\"f<g>h|i/j k.l"), L"abcdefghij k.l");
    EXPECT_TRUE(IsFileNameCharacter(L'_'));
    EXPECT_FALSE(IsFileNameCharacter(L'/'));
}

TEST(BatchOverwriteTest, ExistingTargetsAreListedOnceInSetOrderUnlessOverwriteIsAllowed) {
    const std::vector<BatchFile> files = {
        {L"/in/b.pdf", 1, 1}, {L"/in/a.pdf", 1, 1}, {L"/in2/a.pdf", 1, 1}, {L"/in/new.pdf", 1, 1}};
    const std::set<std::wstring> onDisk = {L"/out/a.pdf", L"/out/b.pdf"};
    const PathExists exists = [&](const std::wstring& path) { return onDisk.contains(path); };
    OutputOptions options = Options(false, true, L"/out/");
    EXPECT_EQ(TargetsToOverwrite(files, options, exists),
              (std::vector<std::wstring>{L"/out/a.pdf", L"/out/b.pdf"}));
    options.overwrite = true;
    EXPECT_TRUE(TargetsToOverwrite(files, options, exists).empty());
    // Results beside their sources with a suffix: none exists yet.
    EXPECT_TRUE(TargetsToOverwrite(files, Options(true, false, L"", L"", L"_r"), exists).empty());
}

TEST(BatchListOrderTest, SizesCountTheirUnitsAndDatesReadByTheFirstFittingFormat) {
    const struct {
        FileListColumn column;
        std::wstring_view a, b;
        bool before;
    } rows[] = {
        {FileListColumn::Size, L"900 KB", L"1.5 MB", true},
        {FileListColumn::Size, L"2 mb", L"1000 kb", false},
        {FileListColumn::Size, L"1 GB", L"1023 MB", false},
        {FileListColumn::Size, L"512 bytes", L"1 KB", true},
        {FileListColumn::Size, L"12KB", L"3 MB", true},
        {FileListColumn::Name, L"apple.pdf", L"Banana.pdf", true},
        {FileListColumn::Name, L"B.pdf", L"a.pdf", false},
        {FileListColumn::Folder, L"/Tmp", L"/tmp/x", true},
        // 12 hours are added to "pm" times.
        {FileListColumn::Date, L"2024-03-01 01:00:00 pm", L"2024-03-01 11:00:00 am", false},
        {FileListColumn::Date, L"2024-03-01 01:00:00 PM", L"2024-03-01 11:00:00 AM", false},
        {FileListColumn::Date, L"03/01/2024 09:00:00", L"02/28/2024 23:00:00", false},
        {FileListColumn::Date, L"2023/12/31 23:59:59 ", L"01/01/2024 00:00:00", true},
        {FileListColumn::Date, L"not a date", L"01/01/1999 00:00:00", true},
    };
    int row = 0;
    for (const auto& r : rows) {
        EXPECT_EQ(SortsBefore(r.column, r.a, r.b), r.before) << row;
        ++row;
    }
    EXPECT_DOUBLE_EQ(SizeTextValue(L"1.5 MB"), 1.5 * 1048576);
    EXPECT_EQ(DateTextValue(L"nothing"), std::nullopt);
}

// A group descriptor: the count, then per name a 592-byte record with the name at byte 72.
std::string Descriptor(std::uint32_t count, const std::vector<std::u16string>& names) {
    std::string block(4 + 592 * names.size(), '\0');
    for (int i = 0; i < 4; ++i)
        block[static_cast<std::size_t>(i)] = static_cast<char>(count >> (8 * i));
    for (std::size_t n = 0; n < names.size(); ++n) {
        for (std::size_t u = 0; u < names[n].size() && u < 260; ++u) {
            block[4 + 592 * n + 72 + 2 * u] = static_cast<char>(names[n][u] & 0xFF);
            block[4 + 592 * n + 73 + 2 * u] = static_cast<char>(names[n][u] >> 8);
        }
    }
    return block;
}

TEST(MailAttachmentDropTest, DescriptorNamesAreReadWithinTheBlockOnly) {
    const std::u16string full(300, u'x');  // fills its 260 units with no end mark
    const struct {
        std::string block;
        std::vector<std::wstring> names;
    } cases[] = {
        {Descriptor(2, {u"Invoice.pdf", u"C:\\mail\\..\\\U0001D11E note.msg"}),
         {L"Invoice.pdf", L"\U0001D11E note.msg"}},
        {Descriptor(1, {u"../../etc/passwd"}), {L"passwd"}},
        {Descriptor(1, {full}), {std::wstring(260, L'x')}},
        {Descriptor(1, {u"a\xD800"
                        u"b"}),
         {L"a\uFFFDb"}},
        {Descriptor(3, {u"a", u"b"}), {}},                 // a count the block can't hold
        {Descriptor(0xFFFFFFFF, {u"a"}), {}},              // a count past any real drop
        {Descriptor(2, {u"a", u"b"}).substr(0, 600), {}},  // cut inside a record
        {"\x01\x00", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AttachmentNames(c.block), c.names) << c.block.size();
}

TEST(MailAttachmentDropTest, EachAttachmentWithContentsBecomesANewMsgFile) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() /
        PathOfUtf8("pi\u00e8ces-" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder);
    const std::string block = Descriptor(3, {u"one.pdf", u"two.pdf", u"three.pdf"});
    const auto contents = [](std::size_t index) -> std::optional<std::string> {
        if (index == 1)
            return std::nullopt;
        return "storage " + std::to_string(index);
    };
    const std::vector<DroppedAttachment> saved = SaveDroppedAttachments(block, contents, folder);
    ASSERT_EQ(saved.size(), 2u);
    EXPECT_NE(saved[0].file, saved[1].file);
    for (std::size_t i = 0; i < saved.size(); ++i) {
        EXPECT_EQ(saved[i].name, i == 0 ? L"one.pdf" : L"three.pdf");
        EXPECT_EQ(saved[i].file.parent_path(), folder);
        EXPECT_EQ(saved[i].file.extension(), ".msg");
        EXPECT_EQ(saved[i].file.filename().string().rfind("MSG", 0), 0u);
        std::ifstream in(saved[i].file, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}),
                  "storage " + std::to_string(i == 0 ? 0 : 2));
    }
    EXPECT_TRUE(SaveDroppedAttachments(block, contents, folder / "missing").empty());
    std::filesystem::remove_all(folder);
}

}  // namespace
