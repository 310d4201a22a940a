#include "win_file_dialog.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(WinFileDialogTest, FiltersBecomeTheSystemsForm) {
    const struct {
        std::wstring filter;
        std::wstring system;
    } cases[] = {
        {L"PDF Files (*.pdf)|*.PDF||", L"PDF Files (*.pdf)\0*.PDF\0\0"s},
        {L"PDF (*.pdf)|*.pdf|All (*.*)|*.*||", L"PDF (*.pdf)\0*.pdf\0All (*.*)\0*.*\0\0"s},
        {L"A|*.a", L"A\0*.a\0\0"s},
        {L"", L""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SystemFilterOf(c.filter), c.system);
}

TEST(WinFileDialogTest, ChosenNamesBecomeFullPaths) {
    const struct {
        std::wstring buffer;
        std::vector<std::wstring> paths;
    } cases[] = {
        {L"C:\\docs\\a.pdf\0\0"s, {L"C:\\docs\\a.pdf"}},
        {L"C:\\docs\0a.pdf\0b.pdf\0\0"s, {L"C:\\docs\\a.pdf", L"C:\\docs\\b.pdf"}},
        {L"C:\\\0a.pdf\0b.pdf\0\0"s, {L"C:\\a.pdf", L"C:\\b.pdf"}},
        {L"\0\0"s, {}},
        // A buffer filled to its end without a closing NUL stops at its end.
        {L"C:\\docs\0a.pdf\0b"s, {L"C:\\docs\\a.pdf", L"C:\\docs\\b"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ChosenPaths(c.buffer.data(), c.buffer.size()), c.paths);
}

TEST(WinFileDialogTest, TheHandleIsTheDialogsOwnRecord) {
    FileDialogSettings settings;
    settings.defaultExtension = L".pdf";
    settings.initialName = L"report.pdf";
    settings.filter = L"PDF Files (*.pdf)|*.PDF||";
    settings.flags = 0x1206;
    WinFileDialog dialog(settings);
    const auto* record = reinterpret_cast<const OPENFILENAMEW*>(dialog.Handle());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->lStructSize, sizeof(OPENFILENAMEW));
    EXPECT_STREQ(record->lpstrDefExt, L"pdf");
    EXPECT_STREQ(record->lpstrFile, L"report.pdf");
    EXPECT_EQ(record->nMaxFile, WinFileDialog::kNameRoom);
    EXPECT_EQ(record->Flags & 0x1206u, 0x1206u);
    EXPECT_STREQ(record->lpstrFilter, L"PDF Files (*.pdf)");
}

}  // namespace
